#include "support/recorded.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

struct Block {
    std::vector<std::string> lines;
    bool asked = false;
};
using Blocks = std::map<std::string, Block>;  // by room/name
static const bool writing = std::getenv("ZUBBLY_WRITE_RECORDS") != nullptr;

static std::vector<std::string> linesOf(std::istream &&stream)
{
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

static fs::path fileOf(const std::string &room)
{
    return fs::path(ZUBBLY_TESTS) / room / "recorded.txt";
}

static Blocks &blocks = []() -> Blocks & {
    auto &all = *new Blocks;
    for (const fs::directory_entry &folder : fs::directory_iterator(ZUBBLY_TESTS)) {
        const std::string room = folder.path().filename().string();
        Block *block = nullptr;
        for (const std::string &line : linesOf(std::ifstream(fileOf(room), std::ios::binary)))
            if (line.starts_with("= "))
                block = &all[room + "/" + line.substr(2)];
            else
                block->lines.push_back(line);
    }
    return all;
}();

std::vector<std::string> recordedLines(const std::string &name)
{
    return blocks[name].lines;
}

void expectRecorded(const std::string &name, const std::string &text)
{
    Block &block = blocks[name];
    const std::vector<std::string> now = linesOf(std::istringstream(text));
    block.asked = true;
    if (writing) block.lines = now;
    const std::vector<std::string> &before = block.lines;
    if (now == before) return;
    const size_t at = size_t(std::ranges::mismatch(before, now).in2 - now.begin());
    std::ostringstream message;
    message << name << " differs first in line " << at + 1 << " of " << before.size() << " recorded and "
            << now.size() << " seen\n";
    for (size_t i = at < 3 ? 0 : at - 3; i < at + 4; ++i) {
        if (i < before.size()) message << (i < at ? "            " : "  recorded: ") << before[i] << "\n";
        if (i >= at && i < now.size()) message << "      seen: " << now[i] << "\n";
    }
    ADD_FAILURE() << message.str();
}

// At the end: writes, or finds blocks that no test asked for if all tests have run.
struct Records : testing::Environment {
    void TearDown() override
    {
        const testing::UnitTest &run = *testing::UnitTest::GetInstance();
        const bool wholeRun = run.test_to_run_count() == run.total_test_count();
        std::map<std::string, std::string> files;  // by rooms
        for (const auto &[name, block] : blocks) {
            EXPECT_TRUE(block.asked || writing || !wholeRun) << "no test asks for " << name;
            if (wholeRun && !block.asked) continue;
            std::string &file = files[name.substr(0, name.find('/'))];
            file += "= " + name.substr(name.find('/') + 1) + "\n";
            for (const std::string &line : block.lines)
                file += line + "\n";
        }
        if (!writing) return;
        for (const auto &[room, text] : files)
            std::ofstream(fileOf(room), std::ios::binary) << text;
    }
};
[[maybe_unused]] static const auto *const records = testing::AddGlobalTestEnvironment(new Records);
