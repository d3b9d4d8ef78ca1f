#include "qvad/api/input_keywords.h"

#include <cctype>

namespace qvad::api {
namespace {

std::string upper(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return result;
}

bool isUpper(char c) {
    return std::isupper(static_cast<unsigned char>(c)) != 0;
}

std::vector<std::string_view> words(std::string_view list) {
    std::vector<std::string_view> result;
    while (!list.empty()) {
        std::size_t start = list.find_first_not_of(" \t");
        if (start == std::string_view::npos) break;
        list.remove_prefix(start);
        std::size_t end = list.find_first_of(" \t");
        result.push_back(list.substr(0, end));
        list.remove_prefix(end == std::string_view::npos ? list.size() : end);
    }
    return result;
}

std::string_view trimmed(std::string_view text) {
    std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos) return {};
    std::size_t end = text.find_last_not_of(" \t");
    return text.substr(start, end - start + 1);
}

// The capitals that mark a word's abbreviation, with any digits just before them ("3Real": "3R").
// Without capitals, or all in capitals, the whole word.
std::string abbreviation(std::string_view word) {
    std::size_t first = 0;
    while (first < word.size() && !isUpper(word[first])) ++first;
    if (first == word.size()) return upper(word);
    std::size_t last = first;
    while (last < word.size() && isUpper(word[last])) ++last;
    while (first > 0 && std::isdigit(static_cast<unsigned char>(word[first - 1]))) --first;
    return upper(word.substr(first, last - first));
}

} // namespace

KeywordList::KeywordList(std::string_view list) {
    std::vector<std::string_view> all = words(list);
    std::size_t local = all.size();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i] == "_") {
            local = i;
            break;
        }
    }
    for (std::size_t i = 0; i < local; ++i) {
        Word word;
        std::string_view written = all[i];
        std::size_t comma = written.find(',');
        if (comma != std::string_view::npos) {
            word.required = upper(written.substr(comma + 1));
            written = written.substr(0, comma);
            if (word.required.empty() || upper(written).rfind(word.required, 0) != 0)
                word.required = upper(written);
        } else {
            word.required = abbreviation(written);
        }
        word.written = std::string(written);
        std::size_t global = local + 1 + i;
        word.returned = global < all.size() ? std::string(all[global]) : word.written;
        m_words.push_back(std::move(word));
    }
}

bool KeywordList::accepts(const Word& word, std::string_view answer) {
    std::string typed = upper(answer);
    std::string full = upper(word.written);
    if (typed == word.required) return true;
    // Longer answers run on from the start of the word and must cover its marked letters.
    std::size_t marked = full.find(word.required);
    if (marked == std::string::npos) return false;
    return typed.size() >= marked + word.required.size() && full.rfind(typed, 0) == 0;
}

int KeywordList::matchIndex(std::string_view answer) const {
    answer = trimmed(answer);
    if (answer.empty()) return -1;
    if (answer.front() == '_' && answer.size() > 1) {
        std::string typed = upper(answer.substr(1));
        for (std::size_t i = 0; i < m_words.size(); ++i)
            if (upper(m_words[i].returned) == typed) return static_cast<int>(i);
        for (std::size_t i = 0; i < m_words.size(); ++i) {
            std::string full = upper(m_words[i].returned);
            if (full.rfind(typed, 0) == 0) return static_cast<int>(i);
        }
        return -1;
    }
    // A whole word wins over another word's abbreviation ("S" before "Sub" in "Sub S").
    std::string typed = upper(answer);
    for (std::size_t i = 0; i < m_words.size(); ++i)
        if (upper(m_words[i].written) == typed) return static_cast<int>(i);
    for (std::size_t i = 0; i < m_words.size(); ++i)
        if (accepts(m_words[i], answer)) return static_cast<int>(i);
    return -1;
}

std::optional<std::string> KeywordList::match(std::string_view answer) const {
    int index = matchIndex(answer);
    if (index < 0) return std::nullopt;
    return m_words[static_cast<std::size_t>(index)].returned;
}

} // namespace qvad::api
