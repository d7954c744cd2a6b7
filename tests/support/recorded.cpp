#include "support/recorded.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

struct Block {
    std::string text;
    bool asked = false;
};
static const bool writing = std::getenv("ZUBBLY_WRITE_RECORDS") != nullptr;

static fs::path fileOf(const std::string &room)
{
    return fs::path(ZUBBLY_TESTS) / room / "recorded.txt";
}

// By room/name.
static std::map<std::string, Block> &blocks = []() -> auto & {
    auto &all = *new std::map<std::string, Block>;
    for (const fs::directory_entry &folder : fs::directory_iterator(ZUBBLY_TESTS)) {
        const std::string room = folder.path().filename().string();
        std::ifstream file(fileOf(room), std::ios::binary);
        std::string name;
        for (std::string line; std::getline(file, line);)
            line.starts_with("= ") ? name = room + "/" + line.substr(2) : all[name].text += line + "\n";
    }
    return all;
}();

std::string recordedText(const std::string &name)
{
    return blocks[name].text;
}

void expectRecorded(const std::string &name, const std::string &text)
{
    Block &block = blocks[name];
    block.asked = true;
    if (writing) block.text = text;
    EXPECT_EQ(block.text, text) << name << " is not as it was recorded";
}

// At the end: writes, or finds blocks that no test asked for if all tests have run.
struct Records : testing::Environment {
    void TearDown() override
    {
        const testing::UnitTest &run = *testing::UnitTest::GetInstance();
        const bool wholeRun = run.test_to_run_count() == run.total_test_count();
        std::map<std::string, std::string> files;  // by rooms
        for (const auto &[name, block] : blocks) {
            const size_t slash = name.find('/');
            EXPECT_TRUE(block.asked || writing || !wholeRun) << "no test asks for " << name;
            if (block.asked || !wholeRun)
                files[name.substr(0, slash)] += "= " + name.substr(slash + 1) + "\n" + block.text;
        }
        for (const auto &[room, text] : files)
            if (writing) std::ofstream(fileOf(room), std::ios::binary) << text;
    }
};
[[maybe_unused]] static const auto *const records = testing::AddGlobalTestEnvironment(new Records);
