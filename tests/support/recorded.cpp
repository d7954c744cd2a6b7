#include "support/recorded.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

struct Block {
    std::vector<std::string> lines;
    bool asked = false;
};
using Room = std::map<std::string, Block>;
static auto &rooms = *new std::map<std::string, Room>;
static const bool writing = std::getenv("ZUBBLY_WRITE_RECORDS") != nullptr;

static fs::path fileOf(const std::string &room)
{
    return fs::path(ZUBBLY_TESTS) / room / "recorded.txt";
}

static std::vector<std::string> linesOf(std::istream &&stream)
{
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

static Room &blocksOf(const std::string &room)
{
    const auto [found, fresh] = rooms.try_emplace(room);
    if (!fresh) return found->second;
    Block *block = nullptr;
    for (const std::string &line : linesOf(std::ifstream(fileOf(room), std::ios::binary))) {
        if (line.starts_with("= "))
            block = &found->second[line.substr(2)];
        else
            block->lines.push_back(line);
    }
    return found->second;
}

void expectRecorded(const std::string &name, const std::string &text)
{
    const size_t slash = name.find('/');
    Block &block = blocksOf(name.substr(0, slash))[name.substr(slash + 1)];
    const std::vector<std::string> now = linesOf(std::istringstream(text));
    block.asked = true;
    if (writing) block.lines = now;
    const std::vector<std::string> &before = block.lines;
    const auto [old, seen] = std::mismatch(before.begin(), before.end(), now.begin(), now.end());
    if (old == before.end() && seen == now.end()) return;
    const size_t at = size_t(seen - now.begin());
    std::ostringstream message;
    message << name << " differs first in line " << at + 1 << " of " << before.size() << " recorded and "
            << now.size() << " seen\n";
    for (size_t i = at < 3 ? 0 : at - 3; i < at + 4; ++i) {
        const bool same = i < before.size() && i < now.size() && before[i] == now[i];
        if (i < before.size()) message << (same ? "            " : "  recorded: ") << before[i] << "\n";
        if (i < now.size() && !same) message << "      seen: " << now[i] << "\n";
    }
    ADD_FAILURE() << message.str();
}

// At the end: writes, or finds blocks that no test asked for if all tests have run.
struct Records : testing::Environment {
    void TearDown() override;
};
[[maybe_unused]] static const auto *const records = testing::AddGlobalTestEnvironment(new Records);

void Records::TearDown()
{
    const testing::UnitTest &run = *testing::UnitTest::GetInstance();
    const bool wholeRun = run.test_to_run_count() == run.total_test_count();
    for (const fs::directory_entry &folder : fs::directory_iterator(ZUBBLY_TESTS)) {
        const std::string room = folder.path().filename().string();
        std::string all;
        for (const auto &[name, block] : blocksOf(room)) {
            EXPECT_TRUE(block.asked || writing || !wholeRun) << "no test asks for " << room << "/" << name;
            if (wholeRun && !block.asked) continue;
            all += "= " + name + "\n";
            for (const std::string &line : block.lines)
                all += line + "\n";
        }
        if (writing && !all.empty()) std::ofstream(fileOf(room), std::ios::binary) << all;
    }
}
