#include "tooldeck/commands/cleanup/CDlgAreaConfig.h"

#include "tooldeck/module/resource_library.h"

#include <cstdio>

namespace qvtd {

namespace {

void fillChoices(CQvUiDialog& dialog, int id, const std::string& list, const std::string& current) {
    dialog.ResetContent(id);
    size_t start = 0;
    while (start <= list.size()) {
        size_t end = list.find(';', start);
        if (end == std::string::npos) end = list.size();
        if (end > start) dialog.AddString(id, list.substr(start, end - start));
        start = end + 1;
    }
    // A value the list lacks is still offered, so that OK keeps it.
    if (dialog.FindStringExact(id, current) == CB_ERR) dialog.AddString(id, current);
    dialog.SetDlgItemText(id, current);
}

void writeValue(const std::string& path, const char* section, const std::string& text) {
    WritePrivateProfileStringA(section, "value", text.c_str(), path.c_str());
}

std::string realText(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.10g", value);
    return text;
}

} // namespace

CDlgAreaConfig::CDlgAreaConfig(std::string settingsPath, HWND parent)
    : CQvUiDialog(kAreaConfigDialogId, parent, openResourceLibrary()), m_path(std::move(settingsPath)) {}

BOOL CDlgAreaConfig::OnInitDialog() {
    m_settings = quantity::loadQuantitySettings(m_path);
    m_toClipboard = m_settings.toClipboard != 0;
    fillChoices(*this, kAreaConfigUnits, m_settings.unitsList, m_settings.units);
    fillChoices(*this, kAreaConfigPrecision, m_settings.precisionList, m_settings.precision);
    return CQvUiDialog::OnInitDialog();
}

void CDlgAreaConfig::DoDataExchange(CQvDataExchange* exchange) {
    DDX_Text(exchange, kAreaConfigDrawingLength, m_settings.drawingLength);
    DDX_Text(exchange, kAreaConfigRealLength, m_settings.realWorldLength);
    DDX_CBString(exchange, kAreaConfigUnits, m_settings.units);
    DDX_CBString(exchange, kAreaConfigPrecision, m_settings.precision);
    DDX_Check(exchange, kAreaConfigToClipboard, m_toClipboard);
    DDX_Text(exchange, kAreaConfigMarkerRadius, m_settings.markerRadius);
}

void CDlgAreaConfig::OnOK() {
    if (!UpdateData(true)) return;
    writeValue(m_path, "Length in drawing units", realText(m_settings.drawingLength));
    writeValue(m_path, "Equivalent length in real world units", realText(m_settings.realWorldLength));
    writeValue(m_path, "To clipboard", m_toClipboard ? "1" : "0");
    writeValue(m_path, "Units", m_settings.units);
    writeValue(m_path, "Precision", m_settings.precision);
    writeValue(m_path, "radio of circle which is drawed by selecting ent", realText(m_settings.markerRadius));
    EndDialog(IDOK);
}

} // namespace qvtd
