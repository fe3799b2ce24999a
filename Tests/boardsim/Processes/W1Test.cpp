// The 1-Wire buses as programs see them below /sys/bus/w1.
#include <gmock/gmock.h>

#include <cstdint>

#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;
using testing::Contains;
using testing::HasSubstr;

const std::string kDevices = "/sys/bus/w1/devices/";
const std::string kEeprom = "2d-00000a1b2c3d";
const std::string kSensor = "22-0000001a2b3c";
const std::string kOther = "22-00000052f00d";

BoardRun shell(const std::string& script, const support::VirtualBoard& on = board()) {
    return on.run({"/bin/sh", "-c", "cd " + kDevices + " || exit 99; " + script});
}

TEST(W1TreeTest, HasADirectoryForEachBusAndEachSlave) {
    EXPECT_EQ(kSensor + "\n" + kOther + "\n" + kEeprom + "\nw1_bus_master1\nw1_bus_master2\n",
              shell("ls").out);
    EXPECT_EQ(kEeprom + "\n" + kSensor + "\n", shell("cat w1_bus_master1/w1_master_slaves").out);
    EXPECT_EQ(kOther + "\n", shell("cat w1_bus_master2/w1_master_slaves").out);
    EXPECT_EQ("eeprom\nid\nname\n", shell("ls " + kEeprom + "/").out);
    EXPECT_EQ("id\nname\ntemp\nuser\n", shell("ls w1_bus_master1/" + kSensor).out);
    EXPECT_EQ(kDevices + "w1_bus_master1/" + kSensor + "\n", shell("realpath " + kSensor).out);
    EXPECT_EQ("directory\n", shell("stat -L -c %F " + kSensor).out);
}

TEST(W1TreeTest, IsGoneWithoutItsPart) {
    EXPECT_EQ(99, shell("", board().without("w1")).status);
}

TEST(W1TreeTest, FilesHaveTheirSizes) {
    EXPECT_EQ("128\n4\n2\n8\n", shell("stat -c %s " + kEeprom + "/eeprom " + kSensor + "/temp " + kSensor +
                                      "/user " + kSensor + "/id")
                                    .out);
}

TEST(W1TreeTest, NothingCanBeMadeOrRemovedInIt) {
    EXPECT_NE(0, shell("touch w1_bus_master1/new 2>/dev/null").status);
    EXPECT_NE(0, shell("mkdir new 2>/dev/null").status);
    EXPECT_NE(0, shell("rm -f " + kEeprom + "/eeprom 2>/dev/null").status);
    EXPECT_NE(0, shell("rmdir w1_bus_master1/" + kEeprom + " 2>/dev/null").status);
    EXPECT_NE(0, shell("rm " + kEeprom + " 2>/dev/null").status);
}

TEST(W1TreeTest, AttributesThatOnlyTellCannotBeOpenedForWritingEvenByRoot) {
    const BoardRun run = shell("echo 1 > w1_bus_master1/w1_master_slaves");
    EXPECT_NE(0, run.status);
    EXPECT_THAT(run.err, HasSubstr("Permission denied"));
}

TEST(W1TreeTest, ARemovedSlaveIsBackAfterASearch) {
    const BoardRun run = shell("echo " + kEeprom +
                               " > w1_bus_master1/w1_master_remove; ls; ls w1_bus_master1 | grep -c ^2; "
                               "echo 1 > w1_bus_master1/w1_master_search; ls " +
                               kEeprom + "/");
    EXPECT_EQ(kSensor + "\n" + kOther + "\nw1_bus_master1\nw1_bus_master2\n1\neeprom\nid\nname\n", run.out)
        << run.err;
}

TEST(W1TreeTest, WhoIsInTheDirectoryOfARemovedSlaveFindsNothingMore) {
    const BoardRun run = shell("cd " + kEeprom + " && exec 3< eeprom && cat name && echo " + kEeprom + " > " +
                               kDevices + "w1_bus_master1/w1_master_remove; cat name; cat <&3");
    EXPECT_EQ(kEeprom + "\n", run.out);
    EXPECT_THAT(run.err, HasSubstr("No such device"));
}

TEST(W1TreeTest, UnknownNamesAreRefused) {
    EXPECT_NE(0, shell("echo 2d-000000000000 > w1_bus_master1/w1_master_remove").status);
    EXPECT_NE(0, shell("echo " + kEeprom + " > w1_bus_master2/w1_master_remove").status);
    EXPECT_NE(0, shell("echo now > w1_bus_master1/w1_master_search").status);
}

TEST(W1TreeTest, SlavesComeAndGoAThousandTimesWhileOthersLook) {
    const BoardRun run = shell("(i=0; while [ $i -lt 1000 ]; do echo " + kEeprom +
                               " > w1_bus_master1/w1_master_remove; "
                               "echo 1 > w1_bus_master1/w1_master_search; i=$((i+1)); done) & "
                               "while kill -0 $! 2>/dev/null; do ls -lR > /dev/null 2>&1; cat " +
                               kEeprom +
                               "/eeprom > /dev/null 2>&1; done; "
                               "wait; ls " +
                               kEeprom + "/");
    EXPECT_EQ("eeprom\nid\nname\n", run.out);
    EXPECT_THAT(run.err, testing::Not(HasSubstr("sh:")));
}

TEST(W1EepromFileTest, HoldsWhatIsWrittenInPieces) {
    const BoardRun run = shell("printf abc | dd of=" + kEeprom +
                               "/eeprom bs=1 seek=100 conv=notrunc 2>/dev/null; "
                               "printf xyz > " +
                               kEeprom + "/eeprom; head -c 3 " + kEeprom + "/eeprom; tail -c 28 " + kEeprom +
                               "/eeprom | head -c 3; wc -c < " + kEeprom + "/eeprom");
    EXPECT_EQ("xyzabc128\n", run.out) << run.err;
}

TEST(W1EepromFileTest, CannotBeWrittenBehindItsEnd) {
    const BoardRun run = shell("printf x | dd of=" + kEeprom + "/eeprom bs=1 seek=128 conv=notrunc");
    EXPECT_NE(0, run.status);
    EXPECT_THAT(run.err, HasSubstr("File too large"));
}

TEST(W1EepromFileTest, CarriesTheCardsRecordsFromTheStart) {
    // Both records with their checksums: the serial at 0, the version at 18.
    EXPECT_EQ(
        " 89 f3 37 3c 26 89 d4 01 00 00 00 f1 53 65 00 00\n"
        " 00 00 14 ff 02 01 00 80 07 00 6e 2f 00 00 00 00\n",
        shell("od -A n -t x1 -N 32 " + kEeprom + "/eeprom").out);
}

TEST(W1EepromFileTest, AWrongBitStaysUntilSomebodyWrites) {
    const BoardRun run =
        shell("f=" + kEeprom +
                  "/eeprom; for i in 1 2; do od -A n -t x1 -N 1 $f; done; "
                  "printf '\\0' | dd of=$f bs=1 seek=127 conv=notrunc 2>/dev/null; od -A n -t x1 -N 1 $f",
              board().option("--fault", "w1:" + kEeprom + ":crc:times=1"));
    EXPECT_EQ(" 99\n 99\n 89\n", run.out);
}

TEST(W1EepromFileTest, APowerFailureTearsAWrite) {
    const BoardRun run = shell("f=" + kEeprom + "/eeprom; printf abcdef > $f; head -c 6 $f | od -A n -c",
                               board().option("--fault", "w1:" + kEeprom + ":torn=4"));
    EXPECT_EQ("   a   b   c   d   & 211\n", run.out);
    EXPECT_THAT(run.err, HasSubstr("I/O error"));
}

TEST(W1TempFileTest, GivesFourBytesAndUserDataTwo) {
    EXPECT_EQ(" 500\n", shell("od -A n -t d4 -w4 " + kSensor + "/temp | tr -s ' '").out);
    EXPECT_EQ(" 00 00\n", shell("od -A n -t x1 " + kSensor + "/user").out);
    EXPECT_EQ(" 03 00\n", shell("od -A n -t x1 " + kOther + "/user").out);
    EXPECT_EQ(
        "42 00",
        shell("printf '\\102' > " + kOther + "/user; od -A n -t x1 " + kOther + "/user").out.substr(1, 5));
}

TEST(W1TempFileTest, AnUnpluggedSensorFailsAndIsGoneAfterTenSearches) {
    const BoardRun run =
        shell("cat " + kSensor + "/temp; echo 10 > w1_bus_master1/w1_master_search; cat " + kSensor + "/temp",
              board().option("--fault", "w1:" + kSensor + ":unplug"));
    EXPECT_EQ("", run.out);
    EXPECT_THAT(run.err, HasSubstr("temp: Input/output error"));
    EXPECT_THAT(run.err, HasSubstr("temp: No such file or directory"));
}

TEST(W1TraceTest, EveryTransferIsALine) {
    const BoardRun run = shell("echo 1 > w1_bus_master1/w1_master_search; head -c 4 " + kSensor +
                                   "/temp > /dev/null; "
                                   "printf x > w1_bus_master1/w1_master_remove 2>/dev/null",
                               board().traced());
    EXPECT_THAT(run.trace, Contains(HasSubstr("w1 w1_bus_master1/w1_master_search write 0x31 0x0a at 0")));
    EXPECT_THAT(run.trace, Contains(HasSubstr("w1 22-0000001a2b3c/temp read 4 bytes at 0")));
    EXPECT_THAT(
        run.trace,
        Contains(HasSubstr("w1 w1_bus_master1/w1_master_remove refused write 0x78 at 0: Invalid argument")));
}

TEST(W1FaultOptionTest, AFaultThatTheBoardCannotHaveIsWrongUsage) {
    const BoardRun run = board().option("--fault", "w1:22-000000000000:unplug").run({"/bin/true"});
    EXPECT_EQ(2, run.status);
    EXPECT_THAT(run.err, HasSubstr("--fault w1:22-000000000000:unplug: no slave"));
}

}  // namespace
