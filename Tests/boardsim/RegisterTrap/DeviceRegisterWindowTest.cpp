#include "Tests/Support/RegisterWindow/DeviceRegisterWindow.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <memory>

#include "Tests/Support/PrivateWorld.h"

namespace registertrap {

namespace {

using support::DeviceRegisterWindow;
using support::Read32, support::Write16, support::Write32;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::KilledBySignal;

constexpr std::size_t kLength = 0x2000;

/// What a driver does: opens and maps the device by itself.
class Driver {
public:
    explicit Driver(int protection = PROT_READ | PROT_WRITE, int flags = MAP_SHARED, off_t offset = 0)
        : file_(::open("/dev/fpga", O_RDWR | O_CLOEXEC)),
          base_(::mmap(nullptr, kLength / 2, protection, flags, file_, offset)) {}
    ~Driver() {
        ::munmap(base_, kLength / 2);
        ::close(file_);
    }

    template <typename Value = std::uint32_t>
    volatile Value& at(std::size_t offset) {
        return *reinterpret_cast<volatile Value*>(static_cast<std::byte*>(base_) + offset);
    }
    void* base() const { return base_; }

private:
    int file_;
    void* base_;
};

class DeviceRegisterWindowTest : public testing::Test {
protected:
    support::PrivateWorld world_;
};

TEST_F(DeviceRegisterWindowTest, RecordsWhatADriverDoesThatMapsTheDeviceByItself) {
    DeviceRegisterWindow window(kLength);
    window.set32(0x10, 0x1234);
    Driver driver;

    const std::uint32_t value = driver.at(0x10);
    driver.at<std::uint16_t>(0x22) = 0x5678;

    EXPECT_EQ(value, 0x1234U);
    EXPECT_EQ(window.get16(0x22), 0x5678);
    EXPECT_THAT(window.accesses(), ElementsAre(Read32(0x10, 0x1234), Write16(0x22, 0x5678)));
}

TEST_F(DeviceRegisterWindowTest, CountsOffsetsFromTheStartOfTheDevice) {
    DeviceRegisterWindow window(kLength);
    Driver driver(PROT_READ | PROT_WRITE, MAP_SHARED, 0x1000);

    driver.at(0x8) = 1;

    EXPECT_THAT(window.accesses(), ElementsAre(Write32(0x1008, 1)));
}

TEST_F(DeviceRegisterWindowTest, RecordsTwoMappingsOfTheDevice) {
    DeviceRegisterWindow window(kLength);
    Driver first;
    Driver second;

    first.at(0x0) = 7;

    EXPECT_EQ(second.at(0x0), 7U);
    EXPECT_THAT(window.accesses(), ElementsAre(Write32(0x0, 7), Read32(0x0, 7)));
}

TEST_F(DeviceRegisterWindowTest, LeavesPrivateMappingsAlone) {
    DeviceRegisterWindow window(kLength);
    Driver driver(PROT_READ | PROT_WRITE, MAP_PRIVATE);

    driver.at(0x0) = 7;

    EXPECT_THAT(window.accesses(), IsEmpty());
    EXPECT_EQ(window.get32(0x0), 0U);
}

TEST_F(DeviceRegisterWindowTest, LeavesMappingsOfOtherFilesAlone) {
    DeviceRegisterWindow window(kLength);
    const int file = ::open("/dev/other", O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(::ftruncate(file, kLength), 0);
    auto* base = static_cast<volatile std::uint32_t*>(
        ::mmap(nullptr, kLength, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0));

    *base = 7;

    EXPECT_EQ(*base, 7U);
    EXPECT_THAT(window.accesses(), IsEmpty());
    EXPECT_EQ(::munmap(const_cast<std::uint32_t*>(base), kLength), 0);
    ::close(file);
}

TEST_F(DeviceRegisterWindowTest, LeavesMappingsOfNoFileAlone) {
    DeviceRegisterWindow window(kLength);
    void* base = ::mmap(nullptr, kLength, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(base, MAP_FAILED);

    *static_cast<volatile std::uint32_t*>(base) = 7;

    EXPECT_EQ(::munmap(base, kLength), 0);
    EXPECT_THAT(window.accesses(), IsEmpty());
}

TEST_F(DeviceRegisterWindowTest, KeepsTheWindowWhenItIsUnmappedWithALengthOfMinusOne) {
    DeviceRegisterWindow window(kLength);
    Driver driver;

    EXPECT_EQ(::munmap(driver.base(), static_cast<std::size_t>(-1)), -1);
    EXPECT_EQ(errno, EINVAL);
    driver.at(0x4) = 1;

    EXPECT_THAT(window.accesses(), ElementsAre(Write32(0x4, 1)));
}

TEST_F(DeviceRegisterWindowTest, StartsAfreshInEachTest) {
    {
        DeviceRegisterWindow window(kLength);
        Driver driver;
        driver.at(0x4) = 1;
    }
    DeviceRegisterWindow window(kLength);
    Driver driver;

    EXPECT_EQ(driver.at(0x4), 0U);
    EXPECT_THAT(window.accesses(), ElementsAre(Read32(0x4, 0)));
}

using DeviceRegisterWindowDeathTest = DeviceRegisterWindowTest;

TEST_F(DeviceRegisterWindowDeathTest, AMappingThatOutlivesTheDeviceIsDead) {
    EXPECT_EXIT(
        {
            ::signal(SIGSEGV, SIG_DFL);
            auto window = std::make_unique<DeviceRegisterWindow>(kLength);
            Driver driver;
            window.reset();
            driver.at(0x4) = 1;
        },
        KilledBySignal(SIGSEGV), "^$");
}

}  // namespace

}  // namespace registertrap
