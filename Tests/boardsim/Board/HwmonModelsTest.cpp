#include "Tools/boardsim/Board/HwmonModels.h"

#include <gmock/gmock.h>

#include <array>
#include <stdexcept>

namespace {

using boardsim::HwmonModels;
using boardsim::parseFault;
using boardsim::ServedDirectory;
using boardsim::ServedFile;
using boardsim::ServedNode;
using testing::ElementsAre;
using testing::HasSubstr;

class HwmonModelsTest : public testing::Test {
protected:
    static std::vector<std::string> names(const ServedDirectory& directory) {
        std::vector<std::string> found;
        for (const boardsim::ServedEntry& entry : directory.entries()) {
            found.push_back(entry.name);
        }
        return found;
    }
    static const ServedDirectory& enter(const ServedDirectory& directory, std::size_t number) {
        return *std::get<std::shared_ptr<const ServedDirectory>>(directory.entries().at(number).node);
    }
    const ServedDirectory& device(std::size_t number) const {
        return enter(enter(*models.tree().root, number), 0);
    }
    boardsim::FileCalls open(std::size_t hwmon, std::size_t sensor) const {
        return std::get<std::shared_ptr<const ServedFile>>(device(hwmon).entries().at(sensor).node)->open();
    }
    static std::string read(const boardsim::FileCalls& calls, std::uint64_t offset = 0) {
        std::array<std::byte, 64> bytes{};
        const boardsim::Transfer done = calls.read(offset, bytes);
        return done.error == std::errc{} ? std::string(reinterpret_cast<char*>(bytes.data()), done.count)
                                         : std::make_error_code(done.error).message();
    }
    std::string complaintAbout(const std::string& fault) {
        try {
            models.apply(parseFault(fault));
        } catch (const std::invalid_argument& refusal) {
            return refusal.what();
        }
        return {};
    }

    std::vector<std::string> told;
    HwmonModels models{{{2, 1, 44125}, {0, 3, -500}, {2, 15, 0}},
                       [this](const std::string& line) { told.push_back(line); }};
};

TEST_F(HwmonModelsTest, EachSensorIsAFileBelowItsDevice) {
    EXPECT_EQ("/sys/class/hwmon", models.tree().path);
    EXPECT_THAT(names(*models.tree().root), ElementsAre("hwmon0", "hwmon2"));
    EXPECT_THAT(names(enter(*models.tree().root, 1)), ElementsAre("device"));
    EXPECT_THAT(names(device(0)), ElementsAre("temp3_input"));
    EXPECT_THAT(names(device(1)), ElementsAre("temp1_input", "temp15_input"));
}

TEST_F(HwmonModelsTest, TheTextIsMillidegrees) {
    EXPECT_EQ("-500\n", read(open(0, 0)));
    EXPECT_EQ("44125\n", read(open(1, 0)));
    EXPECT_EQ("0\n", read(open(1, 1)));
    EXPECT_THAT(told,
                ElementsAre("hwmon hwmon0/temp3 read 5 bytes at 0", "hwmon hwmon2/temp1 read 6 bytes at 0",
                            "hwmon hwmon2/temp15 read 2 bytes at 0"));
}

TEST_F(HwmonModelsTest, WhoReadsOnGetsTheSameTextUntilHeBeginsAgain) {
    const boardsim::FileCalls calls = open(1, 0);
    EXPECT_EQ("44125\n", read(calls));
    models.apply(parseFault("hwmon:hwmon2/temp1:value=-99"));
    EXPECT_EQ("125\n", read(calls, 2));
    EXPECT_EQ("-99\n", read(calls));
}

TEST_F(HwmonModelsTest, ASensorSaysAnythingOnDemand) {
    models.apply(parseFault("hwmon:hwmon2/temp1:text=warm:times=1"));
    EXPECT_EQ("warm", read(open(1, 0)));
    EXPECT_EQ("44125\n", read(open(1, 0)));
    models.apply(parseFault("hwmon:hwmon2/temp1:text"));
    EXPECT_EQ("", read(open(1, 0)));
}

TEST_F(HwmonModelsTest, ASensorFailsOrIsAbsentOnDemand) {
    models.apply(parseFault("hwmon:hwmon2/temp1:fail:after=1"));
    EXPECT_EQ("44125\n", read(open(1, 0)));
    EXPECT_EQ("Input/output error", read(open(1, 0)));
    models.apply(parseFault("hwmon:hwmon2/temp1:absent"));
    EXPECT_THAT(names(device(1)), ElementsAre("temp15_input"));
}

TEST_F(HwmonModelsTest, LookingTwiceFindsTheSameFile) {
    const auto file = [&] {
        return std::get<std::shared_ptr<const ServedFile>>(device(1).entries()[0].node);
    };
    EXPECT_EQ(file(), file());
}

TEST_F(HwmonModelsTest, FaultsThatCannotBeAreRefused) {
    EXPECT_THAT(complaintAbout("hwmon:hwmon1/temp1:fail"), HasSubstr("no sensor 'hwmon1/temp1'"));
    EXPECT_THAT(complaintAbout("hwmon:hwmon2/temp1:value=warm"), HasSubstr("value wants millidegrees"));
    EXPECT_THAT(complaintAbout("hwmon:hwmon2/temp1:value"), HasSubstr("value wants millidegrees"));
    EXPECT_THAT(complaintAbout("hwmon:hwmon2/temp1:melt"), HasSubstr("there are value=MILLIDEGREES"));
    EXPECT_THAT(complaintAbout("hwmon:hwmon2/temp1:fail=1"), HasSubstr("no action"));
}

}  // namespace
