// What is found about the values of the serial line and of the lens.
#include "CheckBench.h"

namespace orx::orxctl {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

class CheckValues : public CheckTable {};

TEST_P(CheckValues, findsExactlyThat) {
    EXPECT_THAT(findings(GetParam().lines), ElementsAreArray(GetParam().findings));
}

INSTANTIATE_TEST_SUITE_P(
    Serial, CheckValues,
    testing::Values(
        Case{
            "outOfRange",
            "serial.debug = 3\nserial.baudrate = 4000001\nserial.bytesize = 4\n"
            "serial.delay = 10001\nserial.stopbits = 0\nserial.timeout = -1",
            {"orx.cfg:1: warning: 3 is passed over, 0 is used; give 0 to 2",
             R"(orx.cfg:2: warning: 4000001 is passed over, "M" keeps its 9600; give 0 to 4000000)",
             R"(orx.cfg:3: warning: 4 is passed over, "M" keeps its 8; give 5 to 8)",
             R"(orx.cfg:4: warning: 10001 is passed over, "M" keeps its 0; give 0 to 10000)",
             R"(orx.cfg:5: warning: 0 is passed over, "M" keeps its 1; give 1 to 2)",
             R"(orx.cfg:6: warning: -1 is passed over, "M" keeps its 100; give 0 to 10000)"}},
        Case{"noNumbers",
             "serial.debug = off\nserial.delay = fast",
             {R"(orx.cfg:1: error: the daemon ends with "ERROR: stoi": "off" is no number; give )"
              "0 to 2",
              R"(orx.cfg:2: error: the daemon ends with "ERROR: stoi": "fast" is no number; give )"
              "0 to 10000"}},
        Case{"tooLargeANumber",
             "serial.baudrate = 9600000000",
             {R"(orx.cfg:1: error: the daemon ends with "ERROR: stoi": "9600000000" is too large )"
              "a number; give 0 to 4000000"}},
        Case{"trailingText",
             "serial.baudrate = 9600 baud",
             {R"(orx.cfg:1: warning: "9600 baud" is read as 9600; leave out "baud")"}},
        Case{"commentBehindANumber",
             "serial.baudrate = 9600 # usual",
             {R"(orx.cfg:1: warning: "9600 # usual" is read as 9600; leave out "# usual"; )"
              "a comment stands on a line of its own"}},
        Case{"hexadecimalNumber",
             "serial.delay = 0x10",
             {R"(orx.cfg:1: warning: "0x10" is read as 0; leave out "x10")"}},
        Case{"speedThatNoLineHas",
             "serial.baudrate = 14400",
             {"orx.cfg:1: error: no serial line has 14400 bit/s: it hangs up and carries nothing; "
              "set serial.baudrate to what the projector's manual says, such as 9600"}},
        Case{"hangUp",
             "serial.baudrate = 0",
             {"orx.cfg:1: error: no serial line has 0 bit/s: it hangs up and carries nothing; set "
              "serial.baudrate to what the projector's manual says, such as 9600"}},
        Case{"parityInCapitals",
             "serial.parity = Even",
             {R"(orx.cfg:1: warning: "Even" is passed over, "M" keeps its none; give "none", )"
              R"("odd" or "even" in small letters)"}},
        Case{"noDevice",
             "serial.debug = 2\nserial.device =\nserial.baudrate = 14400",
             {"orx.cfg:1: note: with level 2 nothing is sent to the projector, only shown; remove "
              "the line to drive it"}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Lens, CheckValues,
    testing::Values(
        Case{"unknownLockInModes",
             "abszoom.lockinmode = 7\nabsfocus.lockinmode = -1",
             {"orx.cfg:1: warning: 7 does nothing; give 0 to 6",
              "orx.cfg:2: warning: -1 does nothing; give 0 to 6"}},
        Case{"noNumbers",
             "abszoom.reducemax = ten\nabszoom.resetonloadmem = yes\nabszoom.resetsteps = all\n"
             "absfocus.reducemax = %",
             {R"(orx.cfg:1: error: the daemon ends with "ERROR: stoi": "ten" is no number; give )"
              "a percentage such as 10% or a number of steps such as 50",
              R"(orx.cfg:2: error: the daemon ends with "ERROR: stoi": "yes" is no number; give )"
              "0 or 1",
              R"(orx.cfg:3: error: the daemon ends with "ERROR: stoi": "all" is no number; give )"
              "a number of steps such as 50",
              R"(orx.cfg:4: error: the daemon ends with "ERROR: stoi": "" is no number; give )"
              "a percentage such as 10% or a number of steps such as 50"}},
        Case{"oddReductions",
             "abszoom.reducemax = -12.5 %x\nabsfocus.reducemax = 100%",
             {R"(orx.cfg:1: warning: "-12.5 " is read as -12; leave out ".5")",
              R"(orx.cfg:1: warning: "x" behind the "%" is passed over; leave it out)",
              R"(orx.cfg:1: warning: a sign means nothing: "-12.5 %x" withholds as much as )"
              "without it; leave it out",
              R"(orx.cfg:2: warning: "100%" withholds all of the travel, so the lens cannot move )"
              "to a position; give less than 100%"}},
        Case{"usualReductions", "abszoom.reducemax = 99%\nabsfocus.reducemax = 100", {}},
        Case{"resetWithoutSteps",
             "absfocus.resetsteps = 0",
             {"orx.cfg:1: warning: with 0 no step is sent for a reset; give as many fast steps as "
              "surely reach the end stop"}}),
    nameOf);

class CheckSerialOfAModel : public CheckBench {};

TEST_F(CheckSerialOfAModel, aSpeedThatNoLineHasCanComeFromTheModel) {
    folder.write("orx.ccd", orxdef::imageOf("[[model]]\nname = 'M'\nbaudrate = 14400\n"
                                            "parity = 'odd'\n[model.commands]\nON = 'x'\n"));
    EXPECT_THAT(findings(""), Contains(HasSubstr("serial.baudrate: error: no serial line has "
                                                 "14400 bit/s")));
    EXPECT_EQ(status, 1);
    EXPECT_THAT(findings("serial.baudrate = 9600\nserial.parity = x"),
                Contains(HasSubstr(R"("M" keeps its odd)")));
    EXPECT_EQ(status, 0);
}

TEST_F(CheckSerialOfAModel, withoutAModelOnlyTheDebugLevelEndsTheDaemon) {
    const std::string dumb = "projector = none\nserial.delay = 99999\n";
    EXPECT_THAT(findings(dumb + "serial.bytesize = x"),
                Contains("orx.cfg:3: error: as soon as it has a projector, the daemon ends with "
                         "\"ERROR: stoi\": \"x\" is no number; give 5 to 8"));
    EXPECT_THAT(report(dumb + "serial.bytesize = x"), HasSubstr("would start in dumb mode"));
    EXPECT_THAT(findings(dumb), Contains("orx.cfg:2: warning: 99999 is passed over, that of the "
                                         "projector model stays; give 0 to 10000"));
    EXPECT_THAT(report(dumb + "serial.debug = x"), HasSubstr("The daemon would not start."));
}

}  // namespace
}  // namespace orx::orxctl
