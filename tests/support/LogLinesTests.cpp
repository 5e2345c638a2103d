#include "support/LogLines.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

namespace Zuvan::Lumeq::Testing {

namespace {

class TextFile {
public:
    explicit TextFile(const std::string& content)
        : _path(std::filesystem::temp_directory_path() /
                (std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) +
                 ".LogLines.txt")) {
        std::ofstream(_path) << content;
    }
    ~TextFile() { std::filesystem::remove(_path); }
    const std::filesystem::path& Path() const { return _path; }

private:
    std::filesystem::path _path;
};

} // namespace

TEST(LogLines, ReturnsSeverityFunctionAndMessage) {
    const TextFile file("2020-02-29T24:30:05.007Z ERROR   0x1a2c0000 | <Zuvan::Do> it failed\n"
                        "2020-02-29T24:30:05.008Z DEBUG   0x1a2c0000 | Do took 3 ms\n"
                        "2020-02-29T24:30:05.009Z DATA    0x1a2c00000 | <- answer\n");
    EXPECT_EQ(LogLines(file.Path()), (std::vector<LoggedLine>{{"ERROR", "Zuvan::Do", "it failed"},
                                                              {"DEBUG", "", "Do took 3 ms"},
                                                              {"DATA", "", "<- answer"}}));
    EXPECT_EQ(LogMessages(file.Path(), "DEBUG"), std::vector<std::string>{"Do took 3 ms"});
}

TEST(LogLines, MissingFileHasNoLines) { EXPECT_TRUE(LogLines("no such file").empty()); }

TEST(LogLines, LineOfAnotherLayoutIsRefused) {
    const TextFile file("2020-02-29 24:30:05 ERROR it failed\n");
    EXPECT_THROW(LogLines(file.Path()), std::runtime_error);
}

} // namespace Zuvan::Lumeq::Testing
