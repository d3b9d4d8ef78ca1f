#pragma once
// Keyword lists as qvedInitGet takes them: words separated by spaces, each with its capital letters as
// the shortest accepted abbreviation ("Window Crossing": "w", "win" and "WINDOW" all give "Window").
// A word written "LTYPE,LT" names its abbreviation after the comma. A list written "Yes No _ Y N"
// gives local words before the "_" and the words returned for them after it; an answer "_Y" picks a
// returned word directly.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qvad::api {

class KeywordList {
public:
    KeywordList() = default;
    explicit KeywordList(std::string_view list);

    bool empty() const { return m_words.empty(); }
    std::size_t size() const { return m_words.size(); }
    // The word to return for an answer, or nullopt when the answer is none of the words.
    std::optional<std::string> match(std::string_view answer) const;
    // The index of the matched word (for jigs), or -1.
    int matchIndex(std::string_view answer) const;

private:
    struct Word {
        std::string written;  // as typed in the list, upper case marks the abbreviation
        std::string required; // the shortest answer accepted, upper case
        std::string returned; // what the caller gets
    };
    static bool accepts(const Word& word, std::string_view answer);
    std::vector<Word> m_words;
};

} // namespace qvad::api
