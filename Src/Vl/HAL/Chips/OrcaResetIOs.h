#pragma once

#include "Vl/Common/Enums/ResetMode.h"

namespace Valen {

class Sx1509b;

/// The reset signals of the newer board, on port A of one of its I/O expanders: pin A0 clears the flip-flops
/// that remember how the board was reset, A2 and A3 read them. Not thread-safe; the expander's failures are
/// results here, too.
class OrcaResetIOs {
public:
    /// @param expander not owned, must outlive this.
    explicit OrcaResetIOs(Sx1509b* expander) : expander_(expander) {}

    /// @return how the board was reset: None with A2 high, and also when the expander does not answer;
    ///         Software with only A3 high; FactoryDefaults with both low.
    Enums::ResetMode::Type queryResetMode();

    /// @return whether a software reset is requested, which pulls A2 low; false when the expander does not
    ///         answer.
    bool querySwReset();

    /// Clears the flip-flops: drives A0 low, waits until A2 and A3 are both high, drives A0 high. Waits
    /// without end and without a pause while the signals do not come; an expander that does not answer ends
    /// the wait. @return false when A0 could not be driven.
    bool resetFlipFlops();

private:
    Sx1509b* expander_;
};

}  // namespace Valen
