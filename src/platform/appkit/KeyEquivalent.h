#pragma once

namespace appkit {

/// A key that does something by itself.
struct KeyEquivalent {
    /// Lower case, or one of the function keys' characters.
    char32_t character;
    /// Control, where there is no Command key.
    bool withCommand;

    static constexpr char32_t f6 = 0xF709;
};

} // namespace appkit
