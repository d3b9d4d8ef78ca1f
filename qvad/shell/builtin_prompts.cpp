#include "qvad/shell/builtin_prompts.h"

#include <cctype>
#include <sstream>

namespace qvad::shell {

qv_resbuf* OwnedList::find(int code) const {
    for (qv_resbuf* rb = m_list; rb; rb = rb->rbnext)
        if (rb->restype == code) return rb;
    return nullptr;
}

std::optional<std::string> askText(const std::string& prompt, bool allowSpaces) {
    char text[512] = {};
    const int status = qvedGetString(allowSpaces ? 1 : 0, prompt.c_str(), text, sizeof text);
    if (status == QV_RTNONE) return std::string();
    if (status != QV_NORM) return std::nullopt;
    return std::string(text);
}

std::string upperCase(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return result;
}

std::optional<std::size_t> matchOption(std::string_view answer,
                                       const std::vector<std::string_view>& options) {
    // "_WORD" is the language-independent spelling programs use; the words here are those already.
    if (!answer.empty() && answer.front() == '_') answer.remove_prefix(1);
    const std::string typed = upperCase(answer);
    if (typed.empty()) return std::nullopt;
    for (std::size_t i = 0; i < options.size(); ++i) {
        std::size_t required = 0;
        while (required < options[i].size() &&
               !std::islower(static_cast<unsigned char>(options[i][required])))
            ++required;
        const std::string word = upperCase(options[i]);
        if (typed.size() >= std::max<std::size_t>(required, 1) && typed.size() <= word.size() &&
            word.compare(0, typed.size(), typed) == 0)
            return i;
    }
    return std::nullopt;
}

std::vector<std::string> splitNames(std::string_view list) {
    std::vector<std::string> names;
    std::string part;
    std::istringstream in{std::string(list)};
    while (std::getline(in, part, ',')) {
        const auto first = part.find_first_not_of(" \t");
        if (first == std::string::npos) continue;
        names.push_back(part.substr(first, part.find_last_not_of(" \t") - first + 1));
    }
    return names;
}

void say(const std::string& text) {
    qvutPrintf("%s\n", text.c_str());
}

bool pickFirstOrSelect(qv_name selection) {
    return qvedSSGet("I", nullptr, nullptr, nullptr, selection) == QV_NORM ||
           qvedSSGet(nullptr, nullptr, nullptr, nullptr, selection) == QV_NORM;
}

} // namespace qvad::shell
