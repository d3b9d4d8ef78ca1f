#include "qvad/db/entities/OdDbModelerGeometry.h"

std::string OdDbModelerGeometry::modelerData() const {
    auto tags = this->tags();
    auto [b, e] = qvad::db::partRange(*this, kSubclass);
    std::string out;
    bool first = true;
    for (std::size_t i = b; i < e; ++i) {
        if (tags[i].code == 1) {
            if (!first) out += '\n';
            first = false;
            out += tags[i].value();
        } else if (tags[i].code == 3 && !first) {
            out += tags[i].value();
        }
    }
    return out;
}
