#pragma once

#include <string>

namespace kiva {

// Numbers as text, and back. The parsers compute blindly, wrapping at their width: a caller that
// must know asks a check function first.

/// Decimal, a leading "-" allowed; 0 for an empty text.
int Stoi(const std::string& s);
long Stol(const std::string& s);
long long Stoll(const std::string& s);
/// Decimal with the given decimal separator; reads as far as a number goes.
double Stod(const std::string& s, char separator);
/// Hexadecimal of both cases; any other character stands for a digit 0.
unsigned long Stouhex(const std::string& s);
/// Two's complement in the width of the text.
long Stoshex(const std::string& s);
unsigned long Stoubin(const std::string& s);
/// Two's complement in the width of the text.
long Stosbin(const std::string& s);
/// Hexadecimal from the place of `prefix` on where s holds it, else decimal.
long Stoloruhex(const std::string& prefix, const std::string& s);
/// Hexadecimal before `suffix` where s holds it, else decimal with a line on the error stream.
long Stohex(const std::string& s, const std::string& suffix);

[[nodiscard]] bool checkuint(const std::string& s);
[[nodiscard]] bool checkint(const std::string& s);
/// True of an empty text, as checkbin.
[[nodiscard]] bool checkhex(const std::string& s);
/// Hexadecimal digits, then a final 'h'.
[[nodiscard]] bool checkhexintel(const std::string& s);
[[nodiscard]] bool checkbin(const std::string& s);
[[nodiscard]] bool beginbynumber(const std::string& s);
/// Not written: says so on the error stream and gives 1.
int checkdouble(const std::string& s);

std::string ctoS(char c);
std::string long2S(long l);
std::string unslong2S(unsigned long u);
std::string dtoS(double d, int decimals);
/// Eight binary digits of the low byte.
std::string bin8toS(unsigned long i);
/// Lower-case hexadecimal of so many digits, from the low end.
std::string hex1toS(unsigned long i);
std::string hex2toS(unsigned long i);
std::string hex4toS(unsigned long i);
std::string hex8toS(unsigned long i);
/// Three bits to a letter from 'A', most significant first.
std::string unslongbyS(unsigned long u);
/// A new array with a null at the end; the caller owns it.
char* Stoa(const std::string& s);

}  // namespace kiva
