#include "qvad/shell/dialog_template.h"

#include <cctype>
#include <charconv>
#include <set>
#include <stdexcept>

namespace qvad::shell {
namespace {

// Thrown only inside this file and turned into DialogTemplateParse::error.
struct TemplateError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Token {
    std::string text;
    bool quoted = false; // began with a quote: a text, never a word or an attribute
};

std::vector<Token> tokenize(std::string_view line) {
    std::vector<Token> tokens;
    std::size_t i = 0;
    while (i < line.size()) {
        if (std::isspace(static_cast<unsigned char>(line[i]))) {
            ++i;
            continue;
        }
        Token token;
        bool inQuotes = false;
        while (i < line.size() && (inQuotes || !std::isspace(static_cast<unsigned char>(line[i])))) {
            char c = line[i++];
            if (c == '"') {
                if (token.text.empty() && !token.quoted) token.quoted = true;
                inQuotes = !inQuotes;
            } else if (inQuotes && c == '\\' && i < line.size() && (line[i] == '"' || line[i] == '\\')) {
                token.text += line[i++];
            } else {
                token.text += c;
            }
        }
        if (inQuotes) throw TemplateError("a quoted text is not closed");
        tokens.push_back(std::move(token));
    }
    return tokens;
}

bool parseInt(const std::string& text, int& value) {
    const char* end = text.data() + text.size();
    auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end && !text.empty();
}

int parseId(const Token& token) {
    if (!token.quoted) {
        if (token.text == "IDOK") return 1;
        if (token.text == "IDCANCEL") return 2;
        if (token.text == "IDC_STATIC") return -1;
    }
    int id = 0;
    if (token.quoted || !parseInt(token.text, id) || id < -1)
        throw TemplateError("\"" + token.text + "\" is not a control id");
    return id;
}

ControlKind parseKind(const std::string& word) {
    if (word == "STATIC") return ControlKind::Static;
    if (word == "CHECK") return ControlKind::Check;
    if (word == "EDIT") return ControlKind::Edit;
    if (word == "RADIO") return ControlKind::Radio;
    if (word == "LIST") return ControlKind::List;
    if (word == "COMBO") return ControlKind::Combo;
    if (word == "BUTTON") return ControlKind::Button;
    throw TemplateError("unknown statement \"" + word + "\"");
}

std::vector<std::string> splitItems(const std::string& text) {
    std::vector<std::string> items;
    if (text.empty()) return items;
    std::size_t start = 0;
    for (;;) {
        std::size_t bar = text.find('|', start);
        items.push_back(text.substr(start, bar == std::string::npos ? std::string::npos : bar - start));
        if (bar == std::string::npos) break;
        start = bar + 1;
    }
    return items;
}

std::string keywordFromLabel(const std::string& label) {
    std::string keyword;
    for (char c : label)
        if (std::isalnum(static_cast<unsigned char>(c))) keyword += c;
    return keyword;
}

bool sameWord(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (std::toupper(static_cast<unsigned char>(a[i])) != std::toupper(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

bool flag(const std::string& text) {
    if (text == "0") return false;
    if (text == "1") return true;
    throw TemplateError("expected 0 or 1, found \"" + text + "\"");
}

// The optional positional value after the text, by kind.
void applyValue(ControlTemplate& control, const Token& token) {
    switch (control.kind) {
    case ControlKind::Check:
    case ControlKind::Radio:
        control.checked = flag(token.text);
        return;
    case ControlKind::Edit:
        control.value = token.text;
        return;
    case ControlKind::List:
    case ControlKind::Combo:
        if (!parseInt(token.text, control.selected) || control.selected < -1)
            throw TemplateError("\"" + token.text + "\" is not an item index");
        return;
    default:
        throw TemplateError("unexpected \"" + token.text + "\"");
    }
}

void applyAttribute(ControlTemplate& control, const Token& token) {
    if (!token.quoted && token.text == "disabled") {
        control.enabled = false;
        return;
    }
    if (!token.quoted && token.text == "hidden") {
        control.visible = false;
        return;
    }
    std::size_t equals = token.text.find('=');
    std::string name = token.text.substr(0, equals);
    std::string value = token.text.substr(equals + 1);
    bool lists = control.kind == ControlKind::List || control.kind == ControlKind::Combo;
    if (name == "group" && control.kind == ControlKind::Radio && !value.empty()) {
        control.group = value;
    } else if (name == "key" && control.kind == ControlKind::Radio && !value.empty()) {
        if (keywordFromLabel(value) != value) throw TemplateError("key \"" + value + "\" is not one word");
        control.keyword = value;
    } else if (name == "items" && lists) {
        control.items = splitItems(value);
    } else {
        throw TemplateError("unexpected \"" + token.text + "\"");
    }
}

ControlTemplate parseControl(const std::vector<Token>& tokens) {
    ControlTemplate control;
    control.kind = parseKind(tokens[0].text);
    if (tokens.size() < 3) throw TemplateError(tokens[0].text + " needs an id and a text");
    control.id = parseId(tokens[1]);
    control.text = tokens[2].text;
    std::size_t next = 3;
    // A positional value is any token that is not an attribute (attributes have '=' outside quotes,
    // or are the bare flags).
    auto isAttribute = [](const Token& t) {
        return !t.quoted &&
               (t.text.find('=') != std::string::npos || t.text == "disabled" || t.text == "hidden");
    };
    if (next < tokens.size() && !isAttribute(tokens[next])) applyValue(control, tokens[next++]);
    for (; next < tokens.size(); ++next) {
        if (!isAttribute(tokens[next])) throw TemplateError("unexpected \"" + tokens[next].text + "\"");
        applyAttribute(control, tokens[next]);
    }
    if (control.kind == ControlKind::Radio) {
        if (control.group.empty()) throw TemplateError("RADIO needs group=\"<name>\"");
        if (control.keyword.empty()) control.keyword = keywordFromLabel(control.text);
        if (control.keyword.empty()) throw TemplateError("RADIO \"" + control.text + "\" needs key=<Word>");
    }
    if ((control.kind == ControlKind::List || control.kind == ControlKind::Combo) &&
        control.selected >= static_cast<int>(control.items.size()))
        throw TemplateError("selected item " + std::to_string(control.selected) + " does not exist");
    if (control.kind != ControlKind::Static && control.id == -1)
        throw TemplateError(tokens[0].text + " needs an id of its own");
    return control;
}

void checkRadioGroups(const DialogTemplate& dialog) {
    for (std::size_t i = 0; i < dialog.controls.size(); ++i) {
        const ControlTemplate& a = dialog.controls[i];
        if (a.kind != ControlKind::Radio) continue;
        for (std::size_t j = i + 1; j < dialog.controls.size(); ++j) {
            const ControlTemplate& b = dialog.controls[j];
            if (b.kind == ControlKind::Radio && b.group == a.group && sameWord(a.keyword, b.keyword))
                throw TemplateError("radio group \"" + a.group + "\" has the key \"" + a.keyword +
                                    "\" twice");
        }
    }
}

} // namespace

DialogTemplateParse parseDialogTemplate(std::string_view text) {
    DialogTemplateParse result;
    DialogTemplate& dialog = result.dialog;
    bool haveHeader = false;
    std::set<int> ids;
    int lineNumber = 0;
    try {
        std::size_t start = 0;
        while (start <= text.size()) {
            std::size_t end = text.find('\n', start);
            std::string_view line =
                text.substr(start, end == std::string_view::npos ? text.npos : end - start);
            start = end == std::string_view::npos ? text.size() + 1 : end + 1;
            ++lineNumber;
            // The blanks the tokenizer skips, so that a line it finds empty is skipped here.
            std::size_t first = line.find_first_not_of(" \t\n\v\f\r");
            if (first == std::string_view::npos || line[first] == '#') continue;
            std::vector<Token> tokens = tokenize(line);
            if (tokens[0].text == "DIALOG" && !tokens[0].quoted) {
                if (haveHeader) throw TemplateError("a second DIALOG statement");
                if (tokens.size() != 3) throw TemplateError("DIALOG takes an id and a caption");
                dialog.id = parseId(tokens[1]);
                dialog.caption = tokens[2].text;
                haveHeader = true;
                continue;
            }
            if (!haveHeader) throw TemplateError("the first statement must be DIALOG");
            ControlTemplate control = parseControl(tokens);
            if (control.id != -1 && !ids.insert(control.id).second)
                throw TemplateError("control id " + std::to_string(control.id) + " is used twice");
            dialog.controls.push_back(std::move(control));
        }
        lineNumber = 0;
        if (!haveHeader) throw TemplateError("no DIALOG statement");
        checkRadioGroups(dialog);
    } catch (const TemplateError& e) {
        result.error = lineNumber ? "line " + std::to_string(lineNumber) + ": " + e.what() : e.what();
        result.dialog = DialogTemplate{};
    }
    return result;
}

} // namespace qvad::shell
