#include "qvad/api/sysvars_number_format.h"

#include <charconv>

namespace qvad::api {

namespace {

void dropTrailingZeros(std::string& digits) {
    std::size_t point = digits.find('.');
    if (point == std::string::npos) return;
    while (digits.back() == '0') digits.pop_back();
    if (digits.back() == '.') digits.pop_back();
}

} // namespace

std::string formatFixed(double value, int precision, int dimzin) {
    char buffer[400];
    auto [end, error] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, precision);
    std::string text = error == std::errc() ? std::string(buffer, end) : std::string("0");
    if (text.find_first_not_of("-0.") == std::string::npos && text.front() == '-') text.erase(0, 1);
    if (dimzin & kSuppressTrailingZeros) dropTrailingZeros(text);
    if (dimzin & kSuppressLeadingZero) {
        std::size_t digit = text.front() == '-' ? 1 : 0;
        if (text.compare(digit, 2, "0.") == 0) text.erase(digit, 1);
    }
    return text;
}

std::string formatScientific(double value, int precision, int dimzin) {
    char buffer[64];
    auto [end, error] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific, precision);
    std::string text = error == std::errc() ? std::string(buffer, end) : std::string("0E+00");
    std::size_t e = text.find('e');
    if (e != std::string::npos) text[e] = 'E';
    if (dimzin & kSuppressTrailingZeros && e != std::string::npos) {
        std::string mantissa = text.substr(0, e);
        dropTrailingZeros(mantissa);
        text = mantissa + text.substr(e);
    }
    return text;
}

} // namespace qvad::api
