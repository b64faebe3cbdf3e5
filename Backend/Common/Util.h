// Integers as text.
//
// Every conversion writes exactly the digits of the value at the given place, with a leading "-" for negative values,
// and returns how many characters that were: no terminating NUL, no padding, no byte beyond. Digits above 9 are
// lower-case letters. Base 10 is the hot path; all other bases are for diagnostics.
#pragma once

namespace Quillon {

class Util {
  public:
    /// The longest text of a conversion: a sign and the 64 binary digits of the least 64-bit number.
    static constexpr int MAX_DIGITS = 65;

    // All of them: `base` is 2 to 36; with any other base nothing is written and 0 is returned. A negative value is "-"
    // and its magnitude, in every base. Requires room for the whole text: MAX_DIGITS is always enough, in base 10 a
    // 16-, 32- or 64-bit value takes at most 6, 11 or 20 characters.

    static int stoa(short value, char* out, unsigned int base);
    static int ustoa(unsigned short value, char* out, unsigned int base);
    static int itoa(int value, char* out, unsigned int base);
    static int uitoa(unsigned int value, char* out, unsigned int base);
    static int lltoa(long long value, char* out, unsigned int base);
    static int ulltoa(unsigned long long value, char* out, unsigned int base);

    /// lltoa() in base 10, for callers that go on writing: returns the position after the text.
    static char* decimal(long long value, char* out);
};

} // namespace Quillon
