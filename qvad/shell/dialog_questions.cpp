// How a dialog's controls are asked on the command line. Every question goes through the host's input
// functions so that feeds, scripts and the terminal answer it like any other prompt.

#include "qvad/api/answers.h"
#include "qvad/api/qvad_api.h"
#include "qvad/shell/CQvUiDialog.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <set>

using qvad::shell::ControlKind;
using qvad::shell::ControlTemplate;

namespace {

constexpr std::size_t answerRoom = 4096;

enum class Reply { Text, Empty, Cancelled };

bool sameText(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return std::toupper(static_cast<unsigned char>(x)) == std::toupper(static_cast<unsigned char>(y));
    });
}

std::string withDefault(const std::string& question, const std::string& current) {
    return "\n" + question + (current.empty() ? "" : " <" + current + ">") + ": ";
}

// A keyword among the blank-separated keywords; an empty answer (Enter) is Empty.
Reply askKeyword(const std::string& prompt, const std::string& keywords, std::string& word) {
    char buffer[answerRoom] = {};
    qvedInitGet(0, keywords.c_str());
    int status = qvedGetKword(prompt.c_str(), buffer, sizeof buffer);
    word = buffer;
    if (status == QV_NORM || status == QV_KWORD) return word.empty() ? Reply::Empty : Reply::Text;
    if (status == QV_RTNONE) return Reply::Empty;
    return Reply::Cancelled; // cancelled, or input that has ended
}

Reply askText(const std::string& prompt, std::string& text) {
    char buffer[answerRoom] = {};
    int status = qvedGetString(1, prompt.c_str(), buffer, sizeof buffer);
    text = buffer;
    if (status == QV_NORM) return text.empty() ? Reply::Empty : Reply::Text;
    if (status == QV_RTNONE) return Reply::Empty;
    return Reply::Cancelled;
}

std::string joined(const std::vector<std::string>& words, const char* separator) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : separator) + word;
    return text;
}

// The 0-based item an answer names: its text (case-insensitive) or its 1-based number.
int itemFromAnswer(const std::vector<std::string>& items, const std::string& answer) {
    for (std::size_t i = 0; i < items.size(); ++i)
        if (sameText(items[i], answer)) return static_cast<int>(i);
    int number = 0;
    const char* end = answer.data() + answer.size();
    auto [stop, error] = std::from_chars(answer.data(), end, number);
    if (error == std::errc() && stop == end && number >= 1 && number <= static_cast<int>(items.size()))
        return number - 1;
    return -1;
}

} // namespace

bool CQvUiDialog::askable(const ControlTemplate& c) const {
    return c.enabled && c.visible && c.kind != ControlKind::Static && c.kind != ControlKind::Button;
}

void CQvUiDialog::printHeading() const {
    std::string heading = "\n" + m_dialog.caption;
    for (const ControlTemplate& c : m_dialog.controls)
        if (c.kind == ControlKind::Static && c.visible && !c.text.empty()) heading += "\n" + c.text;
    qvad::api::show(heading);
}

bool CQvUiDialog::askControls() {
    std::set<std::string> groupsAsked;
    // By index: an OnControlChanged may add items, but never controls.
    for (std::size_t i = 0; i < m_dialog.controls.size(); ++i) {
        ControlTemplate& c = m_dialog.controls[i];
        if (!askable(c)) continue;
        Asked asked = Asked::Kept;
        switch (c.kind) {
        case ControlKind::Check:
            asked = askCheck(c);
            break;
        case ControlKind::Radio:
            if (!groupsAsked.insert(c.group).second) continue;
            asked = askRadioGroup(c.group);
            break;
        case ControlKind::List:
        case ControlKind::Combo:
            asked = askList(c);
            break;
        case ControlKind::Edit:
            asked = askEdit(c);
            break;
        default:
            continue;
        }
        if (asked == Asked::Cancelled) return false;
        if (asked == Asked::Changed) OnControlChanged(m_dialog.controls[i].id);
    }
    return true;
}

CQvUiDialog::Asked CQvUiDialog::askCheck(ControlTemplate& c) {
    std::string word;
    Reply reply = askKeyword(withDefault(c.text + " [Yes/No]", c.checked ? "Yes" : "No"), "Yes No", word);
    if (reply == Reply::Cancelled) return Asked::Cancelled;
    if (reply == Reply::Empty) return Asked::Kept;
    bool checked = sameText(word, "Yes");
    if (checked == c.checked) return Asked::Kept;
    c.checked = checked;
    return Asked::Changed;
}

CQvUiDialog::Asked CQvUiDialog::askRadioGroup(const std::string& group) {
    std::vector<ControlTemplate*> options;
    std::vector<std::string> keywords;
    std::string current;
    for (ControlTemplate& c : m_dialog.controls) {
        if (c.kind != ControlKind::Radio || c.group != group || !askable(c)) continue;
        options.push_back(&c);
        keywords.push_back(c.keyword);
        if (c.checked) current = c.keyword;
    }
    std::string word;
    std::string prompt = withDefault(group + " [" + joined(keywords, "/") + "]", current);
    Reply reply = askKeyword(prompt, joined(keywords, " "), word);
    if (reply == Reply::Cancelled) return Asked::Cancelled;
    if (reply == Reply::Empty) return Asked::Kept;
    for (ControlTemplate* option : options) {
        if (!sameText(option->keyword, word)) continue;
        if (option->checked) return Asked::Kept;
        CheckDlgButton(option->id, BST_CHECKED);
        OnControlChanged(option->id);
        return Asked::Kept; // the option, not the first member, is the control that changed
    }
    return Asked::Kept;
}

CQvUiDialog::Asked CQvUiDialog::askList(ControlTemplate& c) {
    int id = c.id;
    std::string listing;
    for (std::size_t i = 0; i < c.items.size(); ++i)
        listing += "\n  " + std::to_string(i + 1) + "  " + c.items[i];
    if (!listing.empty()) qvad::api::show("\n" + c.text + ":" + listing);
    for (;;) {
        // Re-found each time: the reference must not outlive a change to the control list.
        ControlTemplate* list = control(id);
        std::string current = list->selected >= 0 ? list->items[list->selected] : std::string();
        std::string answer;
        Reply reply = askText(withDefault(list->text, current), answer);
        if (reply == Reply::Cancelled) return Asked::Cancelled;
        if (reply == Reply::Empty) return Asked::Kept;
        int index = itemFromAnswer(list->items, answer);
        if (index < 0) {
            qvad::api::show("\nNo item \"" + answer + "\" in the list; give its name or number.");
            continue;
        }
        if (index == list->selected) return Asked::Kept;
        list->selected = index;
        return Asked::Changed;
    }
}

CQvUiDialog::Asked CQvUiDialog::askEdit(ControlTemplate& c) {
    std::string answer;
    Reply reply = askText(withDefault(c.text, c.value), answer);
    if (reply == Reply::Cancelled) return Asked::Cancelled;
    if (reply == Reply::Empty || answer == c.value) return Asked::Kept;
    c.value = answer;
    return Asked::Changed;
}

int CQvUiDialog::askOkOrCancel() {
    std::string word;
    Reply reply = askKeyword("\nOK or Cancel? [OK/Cancel] <OK>: ", "OK Cancel", word);
    if (reply == Reply::Cancelled) return -1;
    return reply == Reply::Empty || sameText(word, "OK") ? 1 : 0;
}
