// How a model's commands leave by its serial line.
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "control/Status.h"
#include "support/TemporaryFolder.h"
#include "unit/projector/ModelBench.h"

namespace orx::test {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class ProjectorSend : public testing::Test {
  protected:
    ProjectorSend() { projector.setConnector(connector); }

    FakeLine line;
    FakeTime time;
    std::shared_ptr<SerialSettings> settings = lineSettings();
    std::shared_ptr<SerialConnector> connector = connectorTo(line, time, settings);
    Projector projector{"DEMO",
                        {{"ZOOM", {{1, {.min = 0, .max = 255, .pos = 1, .len = 3, .type = 'A'}}}}},
                        {{"ZOOM", "Z\r"}, {"ON", "PON\r"}, {"OFF", ""}},
                        Projector::additiveChecksum};
};

TEST_F(ProjectorSend, WritesTheEncodedCommand) {
    projector.send(Command("ZOOM 42"));
    projector.send(Command("ON"));
    EXPECT_THAT(line.writes, ElementsAre("Z042\r\xFD", "PON\r\xFA"));
}

TEST_F(ProjectorSend, DoesNothingForACommandThatTheModelLacks) {
    line.events.clear();
    EXPECT_EQ(outputOf([this] {
                  projector.send(Command("FOCUS 5"));
                  projector.send(Command("on"));
                  projector.send(Command(""));
                  projector.sendByName("FOCUSRESET");
              }),
              "");
    EXPECT_THAT(line.events, IsEmpty());
    EXPECT_FALSE(projector.supports("FOCUS"));
}

TEST_F(ProjectorSend, NeedsNoLineForACommandThatTheModelLacks) {
    Projector unconnected(projector);
    unconnected.send(Command("FOCUS 5"));
    EXPECT_THAT(line.writes, IsEmpty());
}

TEST_F(ProjectorSend, SendsAnEmptyStringToo) {
    projector.send(Command("OFF"));
    EXPECT_THAT(line.writes, ElementsAre("\0"s));
    const auto plain = modelWith("OFF", "");
    Projector copy(plain);
    copy.setConnector(connector);
    copy.send(Command("OFF"));
    EXPECT_THAT(line.writes, ElementsAre("\0"s, ""));
}

TEST_F(ProjectorSend, SendsByNameWithoutArguments) {
    projector.sendByName("ON");
    projector.sendByName("ZOOM");
    EXPECT_THAT(line.writes, ElementsAre("PON\r\xFA", "Z\r\x67"));
}

TEST_F(ProjectorSend, SendsRawBytesAsTheyAre) {
    projector.sendRaw("\x02\0\xFF"s + "ON");
    projector.sendRaw("");
    EXPECT_THAT(line.writes, ElementsAre("\x02\0\xFF"s + "ON", ""));
}

TEST_F(ProjectorSend, SendsNothingWhereAnArgumentCannotBeRead) {
    auto decimals = modelWith("KEYSTONEHORI", "K",
                              {{1, {.min = 0, .max = 9, .pos = 1, .len = 1, .type = 'A'}}});
    decimals.setConnector(connector);
    line.events.clear();
    EXPECT_THROW(decimals.send(Command("KEYSTONEHORI nan")), std::invalid_argument);
    EXPECT_THROW(decimals.send(Command("KEYSTONEHORI 4294967296")), std::out_of_range);
    EXPECT_THAT(line.events, IsEmpty());
}

TEST_F(ProjectorSend, ChangesTheDelayOfTheNextCommand) {
    projector.setDelay(7);
    EXPECT_EQ(settings->delay(), 7);
    projector.sendByName("ON");
    projector.setDelay(-3);
    projector.sendByName("ON");
    EXPECT_THAT(time.sleeps, ElementsAre(7, -3));
}

TEST_F(ProjectorSend, UsesTheLineThatWasSetLast) {
    FakeLine other;
    projector.setConnector(connectorTo(other, time, lineSettings()));
    projector.sendByName("ON");
    EXPECT_THAT(line.writes, IsEmpty());
    EXPECT_THAT(other.writes, ElementsAre("PON\r\xFA"));
}

TEST_F(ProjectorSend, IsCopiedWithoutTheLine) {
    ASSERT_EQ(connector.use_count(), 2);
    Projector copy(projector);
    EXPECT_EQ(connector.use_count(), 2);
    EXPECT_EQ(dumpOf(copy), dumpOf(projector));
    FakeLine other;
    copy.setConnector(connectorTo(other, time, lineSettings()));
    copy.send(Command("ZOOM 42"));
    EXPECT_THAT(other.writes, ElementsAre("Z042\r\xFD"));
    EXPECT_THAT(line.writes, IsEmpty());
}

TEST_F(ProjectorSend, ReleasesTheLineWhenItGoes) {
    {
        Projector copy(projector);
        copy.setConnector(connector);
        EXPECT_EQ(connector.use_count(), 3);
    }
    EXPECT_EQ(connector.use_count(), 2);
}

class ProjectorConnect : public testing::Test {
  protected:
    ProjectorConnect() { Status::reset(); }
    ~ProjectorConnect() override { Status::reset(); }

    std::shared_ptr<SerialSettings> configured(const std::string& lines) {
        auto settings = lineSettings();
        settings->readConfiguration(MainConfig(folder.write("orx.cfg", lines)));
        return settings;
    }

    TemporaryFolder folder;
};

TEST_F(ProjectorConnect, OpensTheLineOfTheSettings) {
    auto projector = modelWith("ON", "PON\r");
    const auto settings = configured("serial.debug = 2");
    EXPECT_EQ(outputOf([&] { projector.connect(settings); }),
              "[RS232] entering NO_SERIAL_DEVICE debug mode: serial init & write disabled\n");
    settings->setDelay(0);
    EXPECT_EQ(outputOf([&] { projector.sendByName("ON"); }),
              "[RS232] PON\\x0d\nDEBUG - command string is: PON\\x0d [50 4f 4e 0d]\n");
    projector.setDelay(5);
    EXPECT_EQ(settings->delay(), 5);
}

TEST_F(ProjectorConnect, FailsWhereTheLineCannotBeOpened) {
    auto projector = modelWith("ON", "PON\r");
    try {
        projector.connect(configured("serial.device = " + folder.file("missing/tty")));
        FAIL() << "connected";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(),
                     "[RS232] could not init serial device: No such file or directory");
    }
}

}  // namespace
}  // namespace orx::test
