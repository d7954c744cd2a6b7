#include "support/recorded.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

static bool writing()
{
    static const char *const wanted = std::getenv("ZUBBLY_WRITE_RECORDS");
    return wanted && *wanted;
}

static fs::path fileOf(const std::string &room)
{
    return fs::path(ZUBBLY_TESTS) / room / "recorded.txt";
}

using Blocks = std::map<std::string, std::string>;
static auto &rooms = *new std::map<std::string, Blocks>;
static auto &asked = *new std::set<std::string>;

static std::vector<std::string> linesOf(const std::string &text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

static Blocks &blocksOf(const std::string &room)
{
    const auto [found, fresh] = rooms.try_emplace(room);
    if (!fresh) return found->second;
    std::ifstream file(fileOf(room), std::ios::binary);
    std::string name;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("= ")) {
            name = line.substr(2);
            found->second[name];
        } else {
            found->second[name] += line + "\n";
        }
    }
    return found->second;
}

void expectRecorded(const std::string &name, const std::string &text)
{
    const size_t slash = name.find('/');
    const std::string room = name.substr(0, slash);
    const std::string block = name.substr(slash + 1);
    Blocks &blocks = blocksOf(room);
    asked.insert(name);
    if (writing()) {
        blocks[block] = text.empty() || text.back() == '\n' ? text : text + "\n";
        return;
    }
    if (!blocks.contains(block)) {
        ADD_FAILURE() << name << " is not recorded; it would be\n" << text;
        return;
    }
    const std::vector<std::string> before = linesOf(blocks[block]);
    const std::vector<std::string> now = linesOf(text);
    size_t at = 0;
    while (at < before.size() && at < now.size() && before[at] == now[at])
        ++at;
    if (at == before.size() && at == now.size()) return;
    std::ostringstream message;
    message << name << " differs first in line " << at + 1 << " of " << before.size() << " recorded and "
            << now.size() << " seen\n";
    for (size_t i = at < 3 ? 0 : at - 3; i < at; ++i)
        message << "            " << now[i] << "\n";
    for (size_t i = at; i < at + 4; ++i) {
        const bool same = i < before.size() && i < now.size() && before[i] == now[i];
        if (i < before.size() && !same) message << "  recorded: " << before[i] << "\n";
        if (i < now.size()) message << (same ? "            " : "      seen: ") << now[i] << "\n";
    }
    ADD_FAILURE() << message.str();
}

std::string finishRecords(bool wholeRun)
{
    std::string unasked;
    for (const fs::directory_entry &folder : fs::directory_iterator(ZUBBLY_TESTS)) {
        const std::string room = folder.path().filename().string();
        if (!rooms.contains(room) && !fs::exists(fileOf(room))) continue;
        std::string all;
        for (const auto &[name, text] : blocksOf(room)) {
            const bool used = asked.contains(room + "/" + name);
            if (wholeRun && !used) unasked += room + "/" + name + "\n";
            if (!wholeRun || used) all += "= " + name + "\n" + text;
        }
        if (writing()) std::ofstream(fileOf(room), std::ios::binary) << all;
    }
    return writing() ? "" : unasked;
}
