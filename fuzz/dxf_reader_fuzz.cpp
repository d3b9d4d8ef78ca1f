// Any byte string must either load (and then save) or be refused with a DxfError.

#include "qvad/db/OdDbDatabase.h"
#include "qvad/dxf/dxf_error.h"
#include "qvad/dxf/dxf_reader.h"
#include "qvad/dxf/dxf_writer.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        auto db = qvad::dxf::readDxfBuffer(std::string(reinterpret_cast<const char*>(data), size));
        std::string saved = qvad::dxf::writeDxf(*db);
        // What we write we must read back.
        qvad::dxf::readDxfBuffer(std::move(saved));
    } catch (const qvad::dxf::DxfError&) {
    }
    return 0;
}
