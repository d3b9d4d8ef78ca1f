#pragma once
// What the host's own commands share: asking for text and options through the exported input
// functions, and owning the result-buffer lists those functions hand out.

#include "qvad/api/qvad_api.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qvad::shell {

// Owns a list handed out by the host and releases it.
class OwnedList {
public:
    OwnedList() = default;
    explicit OwnedList(qv_resbuf* list) : m_list(list) {}
    OwnedList(const OwnedList&) = delete;
    OwnedList& operator=(const OwnedList&) = delete;
    ~OwnedList() { qvutRelRb(m_list); }
    qv_resbuf** out() { return &m_list; }
    qv_resbuf* get() const { return m_list; }
    // The first buffer with this code, or null.
    qv_resbuf* find(int code) const;

private:
    qv_resbuf* m_list = nullptr;
};

// The answer as typed (empty for Enter), or nullopt when the prompt was cancelled or input ended.
std::optional<std::string> askText(const std::string& prompt, bool allowSpaces = false);

// An option word as CAD prompts offer them: the capital letters are the shortest accepted answer and
// the answer must be a beginning of the word ("LOck" takes LO, LOC, LOCK); a leading "_" is allowed.
// Index into options, or nullopt.
std::optional<std::size_t> matchOption(std::string_view answer, const std::vector<std::string_view>& options);

// The pick-first set when there is one, else what the user selects; false when nothing came.
bool pickFirstOrSelect(qv_name selection);

std::string upperCase(std::string_view text);
// Splits "a,b , c" into trimmed, non-empty parts.
std::vector<std::string> splitNames(std::string_view list);

// Writes one line to the command line.
void say(const std::string& text);

} // namespace qvad::shell
