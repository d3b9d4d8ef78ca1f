// xclear, xadd, xsub, xread, xmulti: the running total in USERR5 and the number on the clipboard.

#include "qvad/api/qvad_api.h"
#include "qvad/win32/windows_calls.h"
#include "tooldeck/commands/cleanup/quantity_clipboard.h"
#include "tooldeck/commands/cleanup/quantity_settings.h"
#include "tooldeck/commands/cleanup/quantity_total.h"
#include "tooldeck/module/command_handlers.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>

namespace qvtd::cmd {

namespace {

// Adds sign times the clipboard number to the total; a total that cannot be read stays as it was.
void addClipboardToTotal(double sign) {
    Beep(200, 200);
    double value = 0.0;
    quantity::readClipboardNumber(value);
    double total = 0.0;
    if (quantity::readRunningTotal(total) == QV_NORM) quantity::writeRunningTotal(total + sign * value);
    qvedRetVoid();
}

// The whole answer must be one finite number, spaces around it allowed.
bool parseWholeNumber(const char* text, double& value) {
    char* end = nullptr;
    errno = 0;
    value = std::strtod(text, &end);
    if (end == text || errno == ERANGE || !std::isfinite(value)) return false;
    while (*end == ' ' || *end == '\t') ++end;
    return *end == '\0';
}

} // namespace

void cmd_xclear() {
    Beep(200, 200);
    double total = 0.0;
    if (quantity::readRunningTotal(total) == QV_NORM) quantity::writeRunningTotal(0.0);
    qvedRetVoid();
}

void cmd_xadd() {
    addClipboardToTotal(1.0);
}

void cmd_xsub() {
    addClipboardToTotal(-1.0);
}

void cmd_xread() {
    double total = 0.0;
    if (quantity::readRunningTotal(total) == QV_NORM) {
        quantity::QuantitySettings settings = quantity::loadQuantitySettings();
        qvutPrintf("\n%s", settings.format(total).c_str());
    }
    qvedRetVoid();
}

void cmd_xmulti() {
    double clipboardValue = 0.0;
    if (!quantity::readClipboardNumber(clipboardValue)) {
        qvutPrintf("Read the clipboard data error!\n");
        qvedRetVoid();
        return;
    }
    char answer[256] = {};
    if (qvedGetString(0, "\nPlease enter a number:\n", answer, sizeof answer) != QV_NORM) {
        qvedRetVoid();
        return;
    }
    double factor = 0.0;
    if (!parseWholeNumber(answer, factor)) {
        qvutPrintf("Input errors!\n");
        qvedRetVoid();
        return;
    }
    quantity::QuantitySettings settings = quantity::loadQuantitySettings();
    std::string product = settings.format(clipboardValue * factor);
    quantity::writeClipboardText(product);
    qvutPrintf("\n%s", product.c_str());
    qvedRetVoid();
}

} // namespace qvtd::cmd
