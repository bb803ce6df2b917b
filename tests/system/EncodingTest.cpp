// What a command becomes on the line: arguments, checksums, raw bytes and aliases.
#include "system/harness/Story.h"

namespace orx::test {
namespace {

using testing::Contains;

/// The formats that a definition file offers, one command each.
Model formatsModel() {
    Model model{.name = "FORMATS"};
    model.commands = {{"ZOOM", "unused"},          {"INPUT", "ZOOM=\r"},
                      {"KEYSTONEVERT", "LENS:\r"}, {"CONTRAST", "\x02SET\x03"},
                      {"SHARPNESS", "VOL"},        {"INTENSITY", "B"},
                      {"OPMODE", "P,\r"},          {"ON", "ON\r"}};
    model.arguments = {
        {.keyword = "INPUT", .max = 255, .pos = 5, .len = 3, .type = 'A'},
        {.keyword = "KEYSTONEVERT", .min = -5000, .max = 5000, .pos = 5, .len = 0x23, .type = 'D'},
        {.keyword = "CONTRAST", .max = 1000, .pos = 4, .len = 2, .type = 'I'},
        {.keyword = "SHARPNESS", .max = 255, .pos = 3, .len = 2, .type = 'X'},
        {.keyword = "INTENSITY", .min = -99, .max = 99, .pos = 1, .len = 3, .type = 'B'},
        {.keyword = "OPMODE", .number = 1, .max = 9, .pos = 1, .len = 1, .type = 'A'},
        {.keyword = "OPMODE", .number = 2, .max = 99, .pos = 2, .len = 2, .type = 'A'}};
    return model;
}

class Encoding : public Story {
  protected:
    /// What the running daemon puts on the line for `command`.
    std::string sentFor(const std::string& command) {
        const auto before = line.written();
        send(command);
        waitUntilExecuted();
        return line.written().substr(before.size());
    }
};

TEST_F(Encoding, InsertsArgumentsInEveryFormat) {
    startWith(formatsModel());
    EXPECT_EQ(sentFor("INPUT 42"), "ZOOM=042\r");
    EXPECT_EQ(sentFor("INPUT 300"), "ZOOM=255\r");
    EXPECT_EQ(sentFor("INPUT -4"), "ZOOM=000\r");
    EXPECT_EQ(sentFor("KEYSTONEVERT 1,256"), "LENS:+001.26\r");
    EXPECT_EQ(sentFor("KEYSTONEVERT -1.5"), "LENS:-001.50\r");
    EXPECT_EQ(sentFor("KEYSTONEVERT 99"), "LENS:+050.00\r");
    EXPECT_EQ(sentFor("KEYSTONEVERT inf"), "LENS:-050.00\r");
    EXPECT_EQ(sentFor("CONTRAST 300"), std::string("\x02SET\x01\x2C\x03"));
    EXPECT_EQ(sentFor("SHARPNESS 200"), "VOLc8");
    EXPECT_EQ(sentFor("INTENSITY 5"), "B+005");
    EXPECT_EQ(sentFor("INTENSITY -7"), "B-007");
    EXPECT_EQ(sentFor("OPMODE 3 7"), "P3,07\r");
    EXPECT_EQ(sentFor("OPMODE 3 7 9"), "P3,07\r");
    EXPECT_EQ(sentFor("OPMODE 3"), "P3,\r");
    EXPECT_EQ(sentFor("INPUT"), "ZOOM=\r");
}

TEST_F(Encoding, AddsAChecksumWhereTheModelHasOne) {
    auto model = formatsModel();
    model.line.checksum = 1;
    startWith(model);
    EXPECT_EQ(sentFor("INPUT 42"), "ZOOM=042\r\x25");
    EXPECT_EQ(sentFor("CONTRAST 300"), std::string("\x02SET\x01\x2C\x03\x1E"));
    EXPECT_EQ(sentFor("ON"), "ON\r\xAA");
}

TEST_F(Encoding, SendsRawBytesAsTheyAre) {
    auto model = formatsModel();
    model.line.checksum = 1;
    startWith(model);
    EXPECT_EQ(sentFor("RAW 0a 1B ff 00"), std::string("\x0a\x1b\xff\x00", 4));
    EXPECT_EQ(sentFor("RAW 4142"), "AB");
    EXPECT_THAT(installation.log(), Contains("src=" + ownAddress() + " cmd=RAW (0a1Bff00)"));
    EXPECT_THAT(installation.log(), Contains(R"(sending \x0a\x1b\xff\x00 [0a 1b ff 00])"));
}

TEST_F(Encoding, SendsNothingForRawWordsThatAreNoBytes) {
    startWith(formatsModel());
    EXPECT_EQ(sentFor("RAW 0a1"), "");
    EXPECT_EQ(sentFor("RAW zz"), "");
    EXPECT_EQ(sentFor("RAW"), "");
    EXPECT_THAT(daemon->lines(), Contains("[CMDQ] executing cmd: RAW (rcvd from ctrlchan)"));
}

TEST_F(Encoding, LetsAnAliasSendWhatAnotherCommandSends) {
    startWith(formatsModel(),
              "cmd.CMD_BRIGHTNESS = &CMD_INPUT_SELECT\ncmd.CMD_POWER_ON = &CMD_LIGHT_OUTPUT\n"
              "cmd.CMD_CONTRAST = kept\ncmd.UNKNOWN = &CMD_POWER_ON\n");
    EXPECT_EQ(sentFor("BRIGHTNESS 7"), "ZOOM=007\r");
    EXPECT_EQ(sentFor("INPUT 7"), "ZOOM=007\r");
    EXPECT_EQ(sentFor("CONTRAST 1"), std::string("\x02SET\x00\x01\x03", 7));
    EXPECT_EQ(sentFor("ON"), "");
}

TEST_F(Encoding, MakesACommandOfAnAliasToWhatTheModelLacks) {
    auto model = formatsModel();
    model.line.checksum = 1;
    startWith(model, "cmd.CMD_PICTURE_MUTE = &CMD_FREEZE\n");
    EXPECT_EQ(sentFor("PICMUTE"), std::string(1, '\0'));
    EXPECT_EQ(sentFor("FREEZE"), std::string(1, '\0'));
    EXPECT_THAT(installation.log(), Contains(R"(sending \x00 [00])").Times(2));
}

TEST_F(Encoding, LogsTheEmptyCommandOfAnAliasToWhatTheModelLacks) {
    startWith(formatsModel(), "cmd.CMD_PICTURE_MUTE = &CMD_FREEZE\n");
    EXPECT_EQ(sentFor("PICMUTE"), "");
    EXPECT_THAT(installation.log(), Contains("sending  []"));
}

TEST_F(Encoding, TakesTheAliasesOfTheNewConfigurationAfterARestart) {
    startWith(formatsModel(), "cmd.CMD_BRIGHTNESS = &CMD_INPUT_SELECT\n");
    installation.writeConfiguration(configuration("FORMATS", "cmd.CMD_CONTRAST = &CMD_POWER_ON\n"));
    restart();
    EXPECT_EQ(sentFor("BRIGHTNESS 7"), "");
    EXPECT_EQ(sentFor("CONTRAST"), "ON\r");
}

}  // namespace
}  // namespace orx::test
