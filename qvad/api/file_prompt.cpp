// qvedGetFiled: a file dialog is a file-name prompt on the command line.

#include "qvad/api/answers.h"
#include "qvad/api/host_session.h"
#include "qvad/api/qvad_api.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace qvad::api {
namespace {

constexpr std::size_t answerRoom = 4096;

// "dim,*" -> "dim"; "*.txt" -> "txt"; "*" or empty -> none.
std::string firstExtension(const char* extensions) {
    std::string list = extensions ? extensions : "";
    std::string first = list.substr(0, list.find_first_of(",;"));
    first.erase(0, first.find_first_not_of(" \t"));
    first.erase(first.find_last_not_of(" \t") + 1);
    if (first.starts_with("*")) first.erase(0, 1);
    if (first.starts_with(".")) first.erase(0, 1);
    return first == "*" ? std::string() : first;
}

std::string tidied(std::string name) {
    name.erase(0, name.find_first_not_of(" \t"));
    name.erase(name.find_last_not_of(" \t") + 1);
    if (name.size() >= 2 && name.front() == '"' && name.back() == '"') name = name.substr(1, name.size() - 2);
    std::ranges::replace(name, '\\', '/');
    return name;
}

std::string withExtension(const std::string& name, const std::string& extension) {
    std::size_t slash = name.rfind('/');
    std::string base = slash == std::string::npos ? name : name.substr(slash + 1);
    if (extension.empty() || base.find('.') != std::string::npos) return name;
    return name + "." + extension;
}

enum class Outcome { Chosen, AskAgain, Cancelled };

Outcome confirmReplace(const std::string& name) {
    char word[64] = {};
    qvedInitGet(0, "Yes No");
    int status = qvedGetKword(("\n" + name + " already exists. Replace it? [Yes/No] <No>: ").c_str(), word,
                              sizeof word);
    if (status != QV_NORM && status != QV_KWORD && status != QV_RTNONE) return Outcome::Cancelled;
    std::string answer = word;
    bool yes = !answer.empty() && std::toupper(static_cast<unsigned char>(answer[0])) == 'Y';
    return yes ? Outcome::Chosen : Outcome::AskAgain;
}

Outcome check(const std::string& name, bool saving) {
    std::error_code error;
    fs::path path(name);
    if (fs::is_directory(path, error)) {
        show("\n" + name + " is a folder, not a file.");
        return Outcome::AskAgain;
    }
    bool exists = fs::exists(path, error);
    if (!saving) {
        if (exists) return Outcome::Chosen;
        show("\nCannot find " + name + ".");
        return Outcome::AskAgain;
    }
    if (exists) return confirmReplace(name);
    fs::path folder = path.parent_path();
    if (!folder.empty() && !fs::is_directory(folder, error)) {
        show("\nThere is no folder " + folder.string() + ".");
        return Outcome::AskAgain;
    }
    return Outcome::Chosen;
}

int getFiled(const char* title, const char* defaultName, const char* extensions, int flags,
             qv_resbuf* result) {
    if (!result) return refuse(HostError::BadArgument);
    std::string extension = firstExtension(extensions);
    std::string fallback = tidied(defaultName ? defaultName : "");
    // A default that is only a pattern ("*.dim") names no file.
    if (fallback.find('*') != std::string::npos) fallback.clear();
    std::string prompt = "\n" + std::string(title ? title : "File name");
    if (!fallback.empty()) prompt += " <" + fallback + ">";
    prompt += ": ";
    bool saving = (flags & QV_GETFILED_SAVE) != 0;
    for (;;) {
        char answer[answerRoom] = {};
        int status = qvedGetString(1, prompt.c_str(), answer, sizeof answer);
        if (status != QV_NORM && status != QV_RTNONE) return QV_CANCEL;
        std::string name = tidied(answer);
        if (name.empty()) name = fallback;
        if (name.empty()) {
            show("\nA file name is needed.");
            continue;
        }
        name = withExtension(name, extension);
        Outcome outcome = check(name, saving);
        if (outcome == Outcome::Cancelled) return QV_CANCEL;
        if (outcome == Outcome::AskAgain) continue;
        char* copy = nullptr;
        if (qvutNewString(name.c_str(), &copy) != QV_NORM) return QV_ERROR;
        result->restype = QV_RTSTR;
        result->resval.rstring = copy;
        return QV_NORM;
    }
}

} // namespace
} // namespace qvad::api

extern "C" QV_API int qvedGetFiled(const char* title, const char* defaultName, const char* extension,
                                   int flags, struct qv_resbuf* result) {
    return qvad::api::guarded(
        [&] { return qvad::api::getFiled(title, defaultName, extension, flags, result); });
}
