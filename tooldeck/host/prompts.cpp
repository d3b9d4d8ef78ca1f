#include "tooldeck/host/prompts.h"

#include <array>

namespace qvtd {

namespace {

std::string keywordAnswer() {
    std::array<char, 512> word{};
    qvedGetInput(word.data(), word.size());
    return word.data();
}

} // namespace

std::optional<std::string> askKeyword(const char* prompt, const char* keywords, const char* defaultWord) {
    qvedInitGet(defaultWord ? 0 : QV_INP_NONULL, keywords);
    std::array<char, 512> word{};
    const int status = qvedGetKword(prompt, word.data(), word.size());
    if (status == QV_NORM) return std::string(word.data());
    if (status == QV_RTNONE && defaultWord) return std::string(defaultWord);
    return std::nullopt;
}

std::optional<double> askReal(const char* prompt, double defaultValue, int bits) {
    qvedInitGet(bits, nullptr);
    qv_real value = 0.0;
    const int status = qvedGetReal(prompt, &value);
    if (status == QV_NORM) return value;
    if (status == QV_RTNONE) return defaultValue;
    return std::nullopt;
}

std::optional<double> askDistance(const char* prompt, double defaultValue, int bits, const Point3* base) {
    qvedInitGet(bits, nullptr);
    qv_real value = 0.0;
    const int status = qvedGetDist(base ? base->data() : nullptr, prompt, &value);
    if (status == QV_NORM) return value;
    if (status == QV_RTNONE) return defaultValue;
    return std::nullopt;
}

std::optional<int> askInteger(const char* prompt, int defaultValue, int bits) {
    qvedInitGet(bits, nullptr);
    int value = 0;
    const int status = qvedGetInt(prompt, &value);
    if (status == QV_NORM) return value;
    if (status == QV_RTNONE) return defaultValue;
    return std::nullopt;
}

std::optional<std::string> askText(const char* prompt, const std::string& defaultText, bool allowSpaces) {
    std::array<char, 2048> text{};
    if (qvedGetString(allowSpaces ? 1 : 0, prompt, text.data(), text.size()) != QV_NORM) return std::nullopt;
    if (text[0] == '\0') return defaultText;
    return std::string(text.data());
}

PointAnswer askPoint(const char* prompt, const char* keywords, const Point3* base, int bits) {
    qvedInitGet(bits, keywords);
    PointAnswer answer;
    qv_point point = {0.0, 0.0, 0.0};
    switch (qvedGetPoint(base ? base->data() : nullptr, prompt, point)) {
    case QV_NORM:
        answer.kind = PointAnswer::Kind::Point;
        answer.point = {point[0], point[1], point[2]};
        break;
    case QV_KWORD:
        answer.kind = PointAnswer::Kind::Keyword;
        answer.keyword = keywordAnswer();
        break;
    case QV_RTNONE:
        answer.kind = PointAnswer::Kind::Empty;
        break;
    default:
        break;
    }
    return answer;
}

std::optional<bool> askYesNo(const char* prompt, bool defaultYes) {
    const std::optional<std::string> word = askKeyword(prompt, "Yes No", defaultYes ? "Yes" : "No");
    if (!word) return std::nullopt;
    return *word == "Yes";
}

} // namespace qvtd
