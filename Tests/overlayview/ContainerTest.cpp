#include "Tools/overlayview/Container.h"

#include <gmock/gmock.h>

#include "Tests/overlayview/OverlayBytes.h"

namespace {

using overlays::bytes;
using overlays::File;
using overlays::whiteHundred;
using overlays::words;
using overlayview::Container;
using overlayview::Findings;
using overlayview::openContainer;
using overlayview::openRaw;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(ContainerTest, TheHeaderIsThreeBigEndianWords) {
    const File file = bytes({0xFF, 0xFF, 0xFF, 0xFF, 0x12, 0x34, 0x56, 0x78, 0, 0, 0, 0});
    Findings findings;
    const Container container = openContainer(file, findings);
    EXPECT_THAT(findings.damage, IsEmpty());
    ASSERT_TRUE(container.header);
    EXPECT_EQ(0xFFFFFFFFU, container.header->marker);
    EXPECT_EQ(0x12345678U, container.header->identifier);
    EXPECT_EQ(0U, container.header->bodyWords);
    EXPECT_EQ(12U, container.bodyOffset);
    EXPECT_TRUE(container.body().empty());
}

TEST(ContainerTest, TheBodyBeginsBehindTheHeader) {
    const File file = whiteHundred();
    Findings findings;
    const Container container = openContainer(file, findings);
    EXPECT_EQ(128U, container.body().size());
    EXPECT_EQ(std::byte{0x01}, container.body()[0]);
    EXPECT_THAT(findings.damage, IsEmpty());
}

/// What is wrong with a file of these bytes.
std::vector<std::string> damageOf(const File& file) {
    Findings findings;
    openContainer(file, findings);
    return findings.damage;
}

TEST(ContainerTest, AnotherMarkerIsDamage) {
    File file = whiteHundred();
    file[3] = std::byte{0xFE};
    EXPECT_THAT(damageOf(file), ElementsAre(HasSubstr("marker")));
}

TEST(ContainerTest, ALengthThatIsNotPaddedIsDamage) {
    EXPECT_THAT(damageOf(words({0xFFFFFFFF, 0, 1, 0})), ElementsAre(HasSubstr("multiple of 32")));
}

TEST(ContainerTest, ALengthLargerThanTheFileIsDamage) {
    File file = whiteHundred();
    file[11] = std::byte{64};
    EXPECT_THAT(damageOf(file), ElementsAre(HasSubstr("128 bytes of the body are missing")));
    file[8] = std::byte{0xFF};
    EXPECT_THAT(damageOf(file), ElementsAre(HasSubstr("missing"))) << "4278190144 words";
}

TEST(ContainerTest, BytesBehindTheLengthAreDamageAndStayInTheBody) {
    File file = whiteHundred();
    file.push_back(std::byte{1});
    Findings findings;
    EXPECT_EQ(129U, openContainer(file, findings).body().size());
    EXPECT_THAT(findings.damage, ElementsAre(HasSubstr("1 bytes behind")));
}

TEST(ContainerTest, AFileShorterThanAHeaderHasNone) {
    const File whole = whiteHundred();
    for (std::size_t size = 0; size < 12; ++size) {
        const File file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        Findings findings;
        const Container container = openContainer(file, findings);
        EXPECT_FALSE(container.header);
        EXPECT_TRUE(container.body().empty());
        EXPECT_THAT(findings.damage, ElementsAre(HasSubstr("less than a header"))) << size;
    }
}

TEST(ContainerTest, ARawFileBeginsAtTheOffset) {
    const File file = whiteHundred();
    Findings findings;
    const Container container = openRaw(file, 3, findings);
    EXPECT_FALSE(container.header);
    EXPECT_EQ(137U, container.body().size());
    EXPECT_THAT(findings.damage, IsEmpty());
}

TEST(ContainerTest, AnOffsetBehindTheEndIsDamage) {
    const File file = whiteHundred();
    for (const std::size_t offset : {std::size_t{140}, std::size_t{141}, SIZE_MAX}) {
        Findings findings;
        EXPECT_TRUE(openRaw(file, offset, findings).body().empty());
        EXPECT_THAT(findings.damage, ElementsAre(HasSubstr("nothing at offset"))) << offset;
    }
}

}  // namespace
