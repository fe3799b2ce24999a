#include "Tools/boardsim/Host/ServedNodes.h"

#include <gtest/gtest.h>

namespace {

using boardsim::ServedDirectory;
using boardsim::ServedFile;
using boardsim::ServedLink;
using boardsim::ServedNodes;

class ServedNodesTest : public testing::Test {
protected:
    std::shared_ptr<const ServedDirectory> root = std::make_shared<const ServedDirectory>();
    std::shared_ptr<const ServedFile> file = std::make_shared<const ServedFile>();
    std::shared_ptr<const ServedLink> link = std::make_shared<const ServedLink>(ServedLink{"away"});
    ServedNodes nodes{root, 1};
};

TEST_F(ServedNodesTest, TheRootHasTheNumberThatItWasGiven) {
    EXPECT_EQ(root.get(), nodes.findAs<ServedDirectory>(1));
    EXPECT_EQ(1U, nodes.look(root));
}

TEST_F(ServedNodesTest, ANodeKeepsItsNumberWhileItIsKnown) {
    const auto number = nodes.look(file);
    EXPECT_EQ(number, nodes.look(file));
    EXPECT_NE(number, nodes.look(link));
    EXPECT_EQ(file.get(), nodes.findAs<ServedFile>(number));
}

TEST_F(ServedNodesTest, ANodeIsFoundAsWhatItIsOnly) {
    const auto number = nodes.look(link);
    EXPECT_EQ("away", nodes.findAs<ServedLink>(number)->target);
    EXPECT_EQ(nullptr, nodes.findAs<ServedFile>(number));
    EXPECT_EQ(nullptr, nodes.findAs<ServedDirectory>(number));
    EXPECT_EQ(nullptr, nodes.find(number + 1));
}

TEST_F(ServedNodesTest, ANodeIsLetGoWhenAllLooksAreTakenBack) {
    const auto number = nodes.look(file);
    nodes.look(file);
    nodes.look(file);
    nodes.forget(number, 2);
    EXPECT_NE(nullptr, nodes.find(number));
    nodes.forget(number, 1);
    EXPECT_EQ(nullptr, nodes.find(number));
    EXPECT_EQ(1, file.use_count());
}

TEST_F(ServedNodesTest, ANumberIsNotUsedAgain) {
    const auto number = nodes.look(file);
    nodes.forget(number, 1);
    EXPECT_NE(number, nodes.look(file));
    EXPECT_NE(number, nodes.look(link));
}

TEST_F(ServedNodesTest, ForgettingMoreThanWasSeenOrTheUnknownDoesNoHarm) {
    const auto number = nodes.look(file);
    nodes.forget(number, 1000);
    nodes.forget(number, 1);
    nodes.forget(4711, 1);
    EXPECT_EQ(nullptr, nodes.find(number));
}

TEST_F(ServedNodesTest, ANodeThatItsDirectoryHasDroppedStaysWhileItIsKnown) {
    const auto number = nodes.look(file);
    const std::weak_ptr<const ServedFile> watched = file;
    file.reset();
    EXPECT_FALSE(watched.expired());
    nodes.forget(number, 1);
    EXPECT_TRUE(watched.expired());
}

}  // namespace
