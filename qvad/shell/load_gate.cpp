#include "qvad/shell/load_gate.h"

#include "qvad/api/sysvars_session.h"
#include "qvad/win32/windows_calls.h"

#include <cctype>

namespace qvad::shell {
namespace {

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
    return text;
}

bool sameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

} // namespace

bool groupListed(std::string_view refusedList, std::string_view group) {
    group = trimmed(group);
    while (true) {
        auto comma = refusedList.find(',');
        std::string_view name = trimmed(refusedList.substr(0, comma));
        if (!name.empty() && sameName(name, group)) return true;
        if (comma == std::string_view::npos) return false;
        refusedList.remove_prefix(comma + 1);
    }
}

} // namespace qvad::shell

extern "C" int CheckCmdLoadAsName(const char* group) {
    try {
        if (!group) return 1;
        std::string settings = qvad::api::SysVarSession::current().appDataDir() + "qvad.ini";
        char refused[4096] = "";
        GetPrivateProfileStringA("QVAD", "RefusedCommandGroups", "", refused, sizeof refused,
                                 settings.c_str());
        return qvad::shell::groupListed(refused, group) ? 0 : 1;
    } catch (...) {
        // A gate that cannot read its settings refuses nothing, as if there were none.
        return 1;
    }
}
