#pragma once
// The module's fixed command table: what is registered with the host's command stack, in order.

#include "qvad/shell/OdEdCommandStack.h"

#include <array>
#include <cstdint>
#include <span>

namespace qvtd {

struct CommandRow {
    const char* group;
    const char* globalName;
    const char* localName; // what the user types; mostly the global name
    OdEdCommandFunction handler;
};

// Every command registers with these flags, no UI context and function code -1.
inline constexpr std::int32_t kCommandFlags = 0x10000000;

// The groups in registration order.
inline constexpr std::array<const char*, 3> kCommandGroups = {"QvTooldeck", "quantitiestool",
                                                              "OrmelCADtools"};

std::span<const CommandRow> commandTable();

} // namespace qvtd
