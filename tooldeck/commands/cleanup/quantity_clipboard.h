#pragma once
// Single numbers passed through the system clipboard between the quantity tools and other programs.

#include <string>

namespace qvtd::quantity {

// The clipboard's text read as a number (strtod: "12.5mm" gives 12.5). False, with value 0, when the
// clipboard holds no text. When the text is offered only as Unicode the clipboard stays open, as it
// always has with these tools.
bool readClipboardNumber(double& value);
// Replaces the clipboard with the text; an empty text writes nothing and gives false.
bool writeClipboardText(const std::string& text);

} // namespace qvtd::quantity
