#pragma once

namespace Valen {

/// The checksum of the test patterns that one card sends another: a word-wise mixing step of this system,
/// which sender and receiver share. It is not the published byte-wise hash of the same family. A plain value;
/// not thread-safe.
struct JenkinsChecksum {
    unsigned int hash = 0;   ///< the running state
    unsigned int count = 0;  ///< number of words fed

    /// Feeds `n` words; with n of 0 or less nothing changes and `words` may be null.
    void data(const unsigned int* words, int n) {
        if (n > 0) {
            hash = calculate(words, n, hash);
            count += static_cast<unsigned int>(n);
        }
    }

    /// The state after `n` words, begun from `seed`; n of 0 or less gives `seed`, `words` may then be null.
    static constexpr unsigned int calculate(const unsigned int* words, int n, unsigned int seed) {
        unsigned int state = seed;
        for (int i = 0; i < n; ++i) {
            state = (words[i] + state + (state << 10)) ^ ~(state >> 6);
        }
        return state;
    }

    bool operator==(const JenkinsChecksum&) const = default;
};

}  // namespace Valen
