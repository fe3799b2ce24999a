#pragma once

#include <cstdint>
#include <optional>

namespace boardsim {

/// Which of the accesses that a fault could hit it does hit: the first `after` go well, the next `times` do
/// not, and all later ones go well again.
class FaultSchedule {
public:
    FaultSchedule() = default;
    explicit FaultSchedule(std::uint64_t after, std::optional<std::uint64_t> times = std::nullopt)
        : after_(after), times_(times) {}

    /// To be asked once for every access. @return whether this one is hit.
    bool strikes() {
        if (after_ > 0) {
            --after_;
            return false;
        }
        if (!times_) {
            return true;
        }
        if (*times_ == 0) {
            return false;
        }
        --*times_;
        return true;
    }

    /// Hits at most so many accesses, unless it was told how many.
    void limitTo(std::uint64_t times) { times_ = times_.value_or(times); }

private:
    std::uint64_t after_ = 0;
    std::optional<std::uint64_t> times_{};  ///< every access when nothing
};

}  // namespace boardsim
