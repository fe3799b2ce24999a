#pragma once

#include <cstdint>

namespace VLGraphics {
class OLED;
}

namespace Valen {

struct OledPanelButtons;

/// A front panel: a small OLED screen with two buttons beside it and a red encoder that can be pushed.
/// Handed out by the board to a single owner and used by one thread.
class OledPanelInterface {
public:
    /// A state of the screen, as the ASCII character that the panel's driver takes.
    enum class OledState : std::uint8_t {};
    /// What is sent after every new frame.
    static constexpr OledState kFrameShown{'1'};

    OledPanelInterface() = default;
    OledPanelInterface(const OledPanelInterface&) = delete;
    OledPanelInterface& operator=(const OledPanelInterface&) = delete;
    virtual ~OledPanelInterface() = default;

    /// Whether the panel was found and can be used.
    virtual bool initOk() const = 0;
    /// Sets `buttons` to what was done since the last poll, without waiting. @return whether that is
    /// anything.
    virtual bool getButtons(OledPanelButtons& buttons) = 0;
    /// Pushes one whole frame, never null, of the panel's resolution to the screen.
    virtual bool updateScreen(VLGraphics::OLED* frame) = 0;
    /// Waits a moment, pressed or not, then polls as getButtons() does.
    virtual bool waitButton(OledPanelButtons& buttons) = 0;
    /// Switches the screen's state. @return whether the panel took it.
    virtual bool setState(OledState state) = 0;
    /// Whether the screen is lit.
    virtual bool isIlluminated() = 0;
    /// Width and height of the screen in pixels.
    virtual int getXres() = 0;
    virtual int getYres() = 0;
};

}  // namespace Valen
