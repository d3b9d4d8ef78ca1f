// ShowWendal and sahttp: what the module is and where it comes from.

#include "qvad/api/qvad_api.h"
#include "tooldeck/module/Arx2DrxModule.h"
#include "tooldeck/module/about_texts.h"
#include "tooldeck/module/command_handlers.h"

#include <string>

namespace qvtd {

std::string bannerText() {
    return std::string(kModuleName) + " " + QVTD_VERSION +
           " - drafting tool chest: text, clean-up, measurement and block tools";
}

} // namespace qvtd

namespace qvtd::cmd {

void cmd_ShowWendal() {
    qvutPrintf("%s\n", bannerText().c_str());
    qvedRetVoid();
}

void cmd_sahttp() {
    qvutPrintf("%s\n", kProjectAddress);
    qvedRetVoid();
}

} // namespace qvtd::cmd
