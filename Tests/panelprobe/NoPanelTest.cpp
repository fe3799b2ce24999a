// The screen object on a board that has no panel. This program brings its own OrcaInterface, so the library's
// is not linked.
#include <gtest/gtest.h>
#include <unistd.h>

#include "Tools/panelprobe/UI.h"

namespace Valen {

OrcaInterface::OrcaInterface(CPLinkInterface* link) : HD24Interface(link) {}
OrcaInterface::~OrcaInterface() = default;
int OrcaInterface::getOledPanelCount() const {
    return 0;
}
std::unique_ptr<OledPanelInterface> OrcaInterface::getOledPanel(int /*index*/) {
    return nullptr;
}

}  // namespace Valen

namespace {

TEST(UIWithoutPanel, SaysSoAndEndsWith254BeforeItLooksForAFont) {
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            const UI ui;
        },
        testing::ExitedWithCode(254), "^unable to get panel\n$");
}

}  // namespace
