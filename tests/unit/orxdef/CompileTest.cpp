// Compiling from files to a file.
#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>

#include "orxdef/Compile.h"
#include "support/TemporaryFolder.h"

namespace orx::orxdef {
namespace {

class Compile : public testing::Test {
  protected:
    /// Compiles the named files of the folder; the folder itself does not show in `errors`.
    int compileFiles(const std::vector<std::string>& names, const std::string& outputName) {
        std::vector<std::string> paths;
        for (const auto& name : names)
            paths.push_back(folder.file(name));
        std::ostringstream stream;
        std::ostringstream output;
        const auto status = compile({paths, folder.file(outputName)}, output, stream);
        EXPECT_EQ(output.str(), "");
        errors = stream.str();
        const auto prefix = folder.path().string() + "/";
        for (auto at = errors.find(prefix); at != std::string::npos; at = errors.find(prefix))
            errors.erase(at, prefix.size());
        return status;
    }

    [[nodiscard]] std::string content(const std::string& name) const {
        return test::contentOf(folder.file(name));
    }

    [[nodiscard]] std::size_t fileCount() const {
        const std::filesystem::directory_iterator files(folder.path());
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    void writeModel(const std::string& file, const std::string& name) {
        folder.write(file, "[[model]]\nname = '" + name + "'\nbaudrate = 9600\n");
    }

    test::TemporaryFolder folder;
    std::string errors;
};

TEST_F(Compile, writesTheFileAndSaysNothing) {
    writeModel("a.toml", "A");
    EXPECT_EQ(compileFiles({"a.toml"}, "orx.ccd"), 0);
    EXPECT_EQ(errors, "");
    EXPECT_EQ(content("orx.ccd").size(), 22U + 6U + 14U);
}

TEST_F(Compile, givesTheSameBytesEachTime) {
    writeModel("a.toml", "A");
    writeModel("b.toml", "B");
    EXPECT_EQ(compileFiles({"a.toml", "b.toml"}, "first"), 0);
    EXPECT_EQ(compileFiles({"a.toml", "b.toml"}, "second"), 0);
    EXPECT_EQ(content("first"), content("second"));
}

TEST_F(Compile, replacesAnOlderFile) {
    writeModel("a.toml", "A");
    folder.write("orx.ccd", "old");
    EXPECT_EQ(compileFiles({"a.toml"}, "orx.ccd"), 0);
    EXPECT_EQ(content("orx.ccd").substr(0, 2), "\x77\x81");
}

TEST_F(Compile, reportsTheMistakesOfAllFilesInTheOrderGiven) {
    folder.write("z.toml", "[[model]]\nname = 'A'\n");
    folder.write("none.toml", "# to be done\n");
    folder.write("a.toml", "[[model]]\nname = 'A'\nbaudrate = -1\n");
    EXPECT_EQ(compileFiles({"z.toml", "none.toml", "missing.toml", "a.toml"}, "orx.ccd"), 1);
    EXPECT_EQ(errors,
              "z.toml:1:1: the model has no baudrate\n"
              "none.toml:1:1: the file has no [[model]]\n"
              "missing.toml:1:1: cannot be read: No such file or directory\n"
              "a.toml:2:8: model \"A\" is already defined at z.toml:2:8\n"
              "a.toml:3:12: baudrate must be from 0 to 4294967295, not -1\n");
}

TEST_F(Compile, leavesAnOlderFileUntouchedByMistakes) {
    writeModel("a.toml", "A");
    folder.write("bad.toml", "[[model]]\n");
    folder.write("orx.ccd", "old");
    EXPECT_EQ(compileFiles({"a.toml", "bad.toml"}, "orx.ccd"), 1);
    EXPECT_EQ(content("orx.ccd"), "old");
    EXPECT_EQ(fileCount(), 3U);
}

TEST_F(Compile, leavesNoFileBehindAMistake) {
    folder.write("bad.toml", "[[model]]\n");
    EXPECT_EQ(compileFiles({"bad.toml"}, "orx.ccd"), 1);
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(Compile, wantsAModelInEveryFile) {
    writeModel("a.toml", "A");
    folder.write("none.toml", "# to be done\n");
    EXPECT_EQ(compileFiles({"a.toml", "none.toml"}, "orx.ccd"), 1);
    EXPECT_EQ(errors, "none.toml:1:1: the file has no [[model]]\n");
}

TEST_F(Compile, cannotReadAFolder) {
    std::filesystem::create_directory(folder.file("sub.toml"));
    EXPECT_EQ(compileFiles({"sub.toml"}, "orx.ccd"), 1);
    EXPECT_EQ(errors, "sub.toml:1:1: cannot be read: Is a directory\n");
}

TEST_F(Compile, saysWhyTheOutputCannotBeWritten) {
    writeModel("a.toml", "A");
    EXPECT_EQ(compileFiles({"a.toml"}, "nowhere/orx.ccd"), 1);
    EXPECT_EQ(errors, "nowhere/orx.ccd: cannot be written: No such file or directory\n");
}

TEST_F(Compile, neverWritesOverADefinition) {
    writeModel("a.toml", "A");
    const auto before = content("a.toml");
    EXPECT_EQ(compileFiles({"a.toml"}, "./a.toml"), 1);
    EXPECT_EQ(errors, "./a.toml: would be written over: it is one of the definitions\n");
    EXPECT_EQ(content("a.toml"), before);
}

}  // namespace
}  // namespace orx::orxdef
