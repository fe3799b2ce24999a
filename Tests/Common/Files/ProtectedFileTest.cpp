#include "Vl/Common/Files/ProtectedFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "Tests/Support/FileFaults.h"
#include "Tests/Support/PrivateWorld.h"

namespace {

namespace ProtectedFile = Valen::ProtectedFile;
using std::string_literals::operator""s;
using support::PrivateWorld;

const std::string kPath = "/opt/record";
// The published check value of the CRC: that of the digits 1 to 9 is 31C3.
const std::string kData = "123456789";
const std::string kRecord = "\x31\xC3"s + kData;

class ProtectedFileTest : public testing::Test {
protected:
    PrivateWorld world;
    support::FileFaults faults{kPath};
};

TEST_F(ProtectedFileTest, ARecordIsItsCrcBigEndianAndItsData) {
    ProtectedFile::Out out(kPath.c_str(), 0);
    EXPECT_TRUE(out.isValid());
    EXPECT_EQ(9, out.Write(kData.data(), 9));
    EXPECT_TRUE(out.finish());
    EXPECT_EQ(kRecord, PrivateWorld::read(kPath));
}

TEST_F(ProtectedFileTest, DataMayBeWrittenAndReadInParts) {
    ProtectedFile::Out out(kPath.c_str(), 4);
    EXPECT_EQ(2, out.Write("12", 2));
    EXPECT_EQ(7, out.Write("3456789", 7));
    EXPECT_TRUE(out.finish());
    EXPECT_EQ("\0\0\0\0"s + kRecord, PrivateWorld::read(kPath));

    ProtectedFile::In in(kPath.c_str(), 4);
    char bytes[10] = {};
    EXPECT_EQ(4, in.Read(bytes, 4));
    EXPECT_EQ(4, in.position());
    EXPECT_EQ(5, in.Read(bytes + 4, 5));
    EXPECT_EQ(kData, bytes);
    EXPECT_EQ(0x31C3, in.crc());
    EXPECT_EQ(0x31C3, in.storedCrc());
}

TEST_F(ProtectedFileTest, UntilItIsFinishedTheCrcIsZero) {
    ProtectedFile::Out out(kPath.c_str(), 0);
    out.Write(kData.data(), 9);
    EXPECT_EQ("\0\0"s + kData, PrivateWorld::read(kPath));
}

TEST_F(ProtectedFileTest, AFileIsMadeForItsOwnerOnlyAndTruncated) {
    umask(0);
    { ProtectedFile::Out out(kPath.c_str(), 0); }
    using std::filesystem::perms;
    EXPECT_EQ(perms::owner_read | perms::owner_write, std::filesystem::status(kPath).permissions());
    PrivateWorld::write(kPath, "a long text that was there");
    { ProtectedFile::Out out(kPath.c_str(), 0); }
    EXPECT_EQ("\0\0"s, PrivateWorld::read(kPath));
}

TEST_F(ProtectedFileTest, ARecordNeedsTwoBytesFromItsOffset) {
    const struct {
        long size;
        long offset;
        bool valid;
    } rows[] = {
        {2, 0, true},    {1, 0, false},  {0, 0, false},  {12, 10, true},
        {11, 10, false}, {5, 10, false}, {5, -1, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.size);
        PrivateWorld::write(kPath, std::string(static_cast<std::size_t>(row.size), 'x'));
        EXPECT_EQ(row.valid, ProtectedFile::In(kPath.c_str(), row.offset).isValid());
    }
    EXPECT_FALSE(ProtectedFile::In("/opt/missing", 0).isValid());
}

TEST_F(ProtectedFileTest, AskingForValidityKeepsThePosition) {
    PrivateWorld::write(kPath, kRecord);
    ProtectedFile::In in(kPath.c_str(), 0);
    char byte = 0;
    in.Read(&byte, 1);
    EXPECT_TRUE(in.isValid());
    in.Read(&byte, 1);
    EXPECT_EQ('2', byte);
}

TEST_F(ProtectedFileTest, ReadingEndsWithTheFile) {
    PrivateWorld::write(kPath, kRecord);
    ProtectedFile::In in(kPath.c_str(), 0);
    char bytes[20];
    EXPECT_EQ(9, in.Read(bytes, 20));
    EXPECT_EQ(0, in.Read(bytes, 20));
    EXPECT_EQ(0x31C3, in.crc());
}

TEST_F(ProtectedFileTest, NothingIsMovedForNoBytesOrLess) {
    PrivateWorld::write(kPath, kRecord);
    ProtectedFile::In in(kPath.c_str(), 0);
    EXPECT_EQ(0, in.Read(nullptr, 0));
    EXPECT_EQ(0, in.Read(nullptr, -1));
    ProtectedFile::Out out(kPath.c_str(), 0);
    EXPECT_EQ(0, out.Write(nullptr, -1));
}

TEST_F(ProtectedFileTest, ShortAndInterruptedTransfersGoOn) {
    faults.writes = {1, 1, 1, -EINTR, 1, 3, 2};
    ProtectedFile::Out out(kPath.c_str(), 0);
    EXPECT_EQ(9, out.Write(kData.data(), 9));
    EXPECT_TRUE(out.finish());
    EXPECT_EQ(kRecord, PrivateWorld::read(kPath));

    faults.reads = {1, 1, 2, -EINTR, 1, 4};
    ProtectedFile::In in(kPath.c_str(), 0);
    char bytes[10] = {};
    EXPECT_EQ(9, in.Read(bytes, 9));
    EXPECT_EQ(kData, bytes);
    EXPECT_EQ(0x31C3, in.crc());
}

TEST_F(ProtectedFileTest, WhatWasReadBeforeAnErrorCounts) {
    PrivateWorld::write(kPath, kRecord);
    ProtectedFile::In in(kPath.c_str(), 0);
    faults.reads = {4, -EIO};
    char bytes[10] = {};
    EXPECT_EQ(-1, in.Read(bytes, 9));
    EXPECT_EQ(EIO, errno);
    EXPECT_EQ(4, in.position());
    EXPECT_EQ(5, in.Read(bytes + 4, 5));
    EXPECT_EQ(0x31C3, in.crc());
}

TEST_F(ProtectedFileTest, AWriteErrorIsMinusOneAndAFullFileIsShort) {
    ProtectedFile::Out out(kPath.c_str(), 0);
    faults.writes = {3, -EIO};
    EXPECT_EQ(-1, out.Write(kData.data(), 9));
    faults.writes = {3, 0};
    EXPECT_EQ(3, out.Write(kData.data(), 9));
}

TEST_F(ProtectedFileTest, RewindingBeginsAnewWithTheCrcThatIsStoredNow) {
    PrivateWorld::write(kPath, kRecord);
    ProtectedFile::In in(kPath.c_str(), 0);
    char bytes[10] = {};
    in.Read(bytes, 9);
    PrivateWorld::write(kPath, "\x12\x34"s + kData);
    EXPECT_TRUE(in.rewind());
    EXPECT_EQ(0, in.crc());
    EXPECT_EQ(0x1234, in.storedCrc());
    EXPECT_EQ(0, in.position());
}

TEST_F(ProtectedFileTest, AnUnreadableCrcClosesTheFile) {
    PrivateWorld::write(kPath, kRecord);
    ProtectedFile::In in(kPath.c_str(), 0);
    faults.reads = {-EIO};
    EXPECT_FALSE(in.rewind());
    EXPECT_FALSE(in.isValid());
    EXPECT_FALSE(in.rewind());
    char byte = 0;
    EXPECT_EQ(-1, in.Read(&byte, 1));
}

TEST_F(ProtectedFileTest, WithoutAFileNothingIsWritten) {
    ProtectedFile::Out out("/opt/missing/record", 0);
    EXPECT_FALSE(out.isValid());
    EXPECT_EQ(-1, out.Write(kData.data(), 9));
    EXPECT_FALSE(out.finish());
}

TEST_F(ProtectedFileTest, ACrcThatCannotBeWrittenMakesFinishFail) {
    ProtectedFile::Out out(kPath.c_str(), 0);
    out.Write(kData.data(), 9);
    faults.writes = {-EIO};
    EXPECT_FALSE(out.finish());
}

TEST_F(ProtectedFileTest, DescriptorZeroCountsAsClosed) {
    PrivateWorld::write(kPath, kRecord);
    const int standardInput = dup(0);
    close(0);
    EXPECT_FALSE(Valen::File::In(kPath.c_str()).isValid());
    EXPECT_FALSE(ProtectedFile::In(kPath.c_str(), 0).isValid());
    dup2(standardInput, 0);
    close(standardInput);
    EXPECT_TRUE(Valen::File::In(kPath.c_str()).isValid());
}

}  // namespace
