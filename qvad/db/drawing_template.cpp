#include "qvad/db/drawing_template.h"

#include "qvad/dxf/dxf_reader.h"

namespace qvad::db {
namespace {
// Loading runs the audit, which takes what a drawing lacks from the template: not while the
// template itself is being loaded.
thread_local bool t_loadingTemplate = false;
} // namespace

bool isLoadingTemplate() {
    return t_loadingTemplate;
}

std::string templateDxf() {
    std::string_view lines = templateTagLines();
    std::string dxf;
    dxf.reserve(lines.size() * 2);
    while (!lines.empty()) {
        std::size_t end = lines.find('\n');
        std::string_view line = lines.substr(0, end);
        lines = end == std::string_view::npos ? std::string_view() : lines.substr(end + 1);
        std::size_t space = line.find(' ');
        std::string_view code = line.substr(0, space);
        std::string_view value =
            space == std::string_view::npos ? std::string_view() : line.substr(space + 1);
        if (code.size() < 3) dxf.append(3 - code.size(), ' ');
        dxf.append(code).append("\n").append(value).append("\n");
    }
    return dxf;
}

std::unique_ptr<OdDbDatabase> newDrawing() {
    struct Loading {
        Loading() { t_loadingTemplate = true; }
        ~Loading() { t_loadingTemplate = false; }
    } loading;
    return qvad::dxf::readDxfBuffer(templateDxf());
}

} // namespace qvad::db
