#include "Vl/HAL/Board/PatternFile.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "Tests/HAL/BoardWorld.h"

namespace {

using support::PrivateWorld;
using Valen::PatternFile;

class PatternFileTest : public BoardWorld {
protected:
    static constexpr const char* kFile = "/tmp/test.pattern";

    static std::string text(const PatternFile& file) {
        return {reinterpret_cast<const char*>(file.bytes().data()), file.bytes().size()};
    }

    static std::uint32_t wordOf(const char* bytes) {
        std::uint32_t word = 0;
        std::memcpy(&word, bytes, sizeof word);
        return word;
    }
};

TEST_F(PatternFileTest, ChunksAre1024BytesButForTheLast) {
    const std::string bytes = std::string(1024, 'a') + std::string(1024, 'b') + "c";
    PrivateWorld::write(kFile, bytes);
    PatternFile file(kFile, false);
    ASSERT_TRUE(file.next());
    EXPECT_EQ(std::string(1024, 'a'), text(file));
    EXPECT_EQ(1024, file.bytesRead());
    ASSERT_TRUE(file.next());
    EXPECT_EQ(std::string(1024, 'b'), text(file));
    ASSERT_TRUE(file.next());
    EXPECT_EQ("c", text(file));
    EXPECT_EQ(2049, file.bytesRead());
    EXPECT_EQ(2037, file.payloadRead());
    EXPECT_FALSE(file.next());
    EXPECT_TRUE(file.bytes().empty());
    EXPECT_EQ(2049, file.bytesRead());
}

TEST_F(PatternFileTest, TheThirdWordIsTheLengthOfThePayload) {
    PrivateWorld::write(kFile, std::string("........\x03\x02\x01\x00", 12));
    PatternFile file(kFile, false);
    EXPECT_EQ(0, file.payloadExpected());
    ASSERT_TRUE(file.next());
    EXPECT_EQ(0x01'02'03L * 4, file.payloadExpected());
    EXPECT_EQ(0, file.payloadRead());
}

TEST_F(PatternFileTest, LaterChunksHaveNoHeader) {
    PrivateWorld::write(kFile, std::string(1024, '\0') + std::string(1024, '\xFF'));
    PatternFile file(kFile, true);
    while (file.next()) {
        EXPECT_EQ(0, file.payloadExpected());
    }
    EXPECT_EQ(2036, file.payloadRead());
}

TEST_F(PatternFileTest, CorruptingFlipsTheLowestBitOfTheFirstDataWordOnly) {
    const std::string bytes(2048, 'A');
    PrivateWorld::write(kFile, bytes);
    PatternFile file(kFile, true);
    ASSERT_TRUE(file.next());
    std::string altered(1024, 'A');
    altered[12] = '@';
    EXPECT_EQ(altered, text(file));
    ASSERT_TRUE(file.next());
    EXPECT_EQ(std::string(1024, 'A'), text(file));
}

TEST_F(PatternFileTest, CorruptingAFileWithoutPayloadAltersNothingOfIt) {
    PrivateWorld::write(kFile, "....,,,,;;;;");
    PatternFile file(kFile, true);
    ASSERT_TRUE(file.next());
    EXPECT_EQ("....,,,,;;;;", text(file));
}

TEST_F(PatternFileTest, AWordBegunIsFilledWithZerosInTheFirstChunk) {
    PrivateWorld::write(kFile, "abcde");
    PatternFile file(kFile, false);
    ASSERT_TRUE(file.next());
    EXPECT_EQ((std::vector{wordOf("abcd"), wordOf("e\0\0")}),
              std::vector(file.words().begin(), file.words().end()));
    EXPECT_EQ(-7, file.payloadRead());
}

TEST_F(PatternFileTest, AWordBegunIsFilledWithTheChunkBeforeInLaterOnes) {
    PrivateWorld::write(kFile, std::string(1024, 'a') + "bc");
    PatternFile file(kFile, false);
    ASSERT_TRUE(file.next());
    EXPECT_EQ(256U, file.words().size());
    ASSERT_TRUE(file.next());
    EXPECT_EQ(std::vector{wordOf("bcaa")}, std::vector(file.words().begin(), file.words().end()));
}

TEST_F(PatternFileTest, AMissingFileIsNotOpenAndHasNoChunks) {
    PatternFile file("/tmp/none", true);
    EXPECT_FALSE(file.isOpen());
    EXPECT_FALSE(file.next());
    EXPECT_TRUE(file.bytes().empty());
    EXPECT_TRUE(file.words().empty());
}

TEST_F(PatternFileTest, AClosedFileHasNoMoreChunksButItsNumbers) {
    PrivateWorld::write(kFile, std::string(3000, 'a'));
    PatternFile file(kFile, false);
    ASSERT_TRUE(file.next());
    file.close();
    EXPECT_EQ(0, descriptorsOn(kFile));
    EXPECT_FALSE(file.isOpen());
    EXPECT_FALSE(file.next());
    EXPECT_EQ(1024, file.bytesRead());
}

}  // namespace
