#include <fcntl.h>
#include <string>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "core/FileDescriptor.h"
#include "core/InputFile.h"
#include "support/TemporaryFolder.h"

namespace orx::test {
namespace {

using namespace std::string_literals;

class InputFileTest : public testing::Test {
  protected:
    InputFile written(const std::string& content) const {
        return InputFile(folder.write("file", content));
    }

    TemporaryFolder folder;
};

TEST_F(InputFileTest, ReadsPieceByPiece) {
    auto file = written("one\0two"s);
    EXPECT_EQ(file.read(4), "one\0"s);
    EXPECT_EQ(file.read(2), "tw");
    EXPECT_EQ(file.read(2), "o");
    EXPECT_EQ(file.read(2), "");
}

TEST_F(InputFileTest, ReadsAllThatIsLeft) {
    const std::string large(100'001, 'x');
    auto file = written("head" + large);
    EXPECT_EQ(file.read(4), "head");
    EXPECT_EQ(file.readAll(), large);
    EXPECT_EQ(file.readAll(), "");
}

TEST_F(InputFileTest, GoesToAnyPlaceAlsoFromTheEnd) {
    auto file = written("abcdef");
    EXPECT_EQ(file.readAll(), "abcdef");
    file.seek(2);
    EXPECT_EQ(file.read(2), "cd");
    file.seek(100);
    EXPECT_EQ(file.read(2), "");
    file.seek(0);
    EXPECT_EQ(file.read(1), "a");
}

TEST_F(InputFileTest, IsNotOpenWhereThereIsNoFile) {
    InputFile file(folder.file("missing"));
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ(file.read(1), "");
    EXPECT_EQ(file.readAll(), "");
}

TEST_F(InputFileTest, FindsNothingInAFolder) {
    InputFile file(folder.path().string());
    EXPECT_TRUE(file.isOpen());
    EXPECT_EQ(file.readAll(), "");
}

TEST_F(InputFileTest, CountsAsReadWhereItHasNoPlaces) {
    const auto pipe = folder.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
    const FileDescriptor writer(::open(pipe.c_str(), O_RDWR | O_CLOEXEC));
    ASSERT_EQ(::write(writer.get(), "ab", 2), 2);
    InputFile file(pipe);
    EXPECT_EQ(file.read(1), "a");
    file.seek(0);
    EXPECT_EQ(file.read(1), "");
}

}  // namespace
}  // namespace orx::test
