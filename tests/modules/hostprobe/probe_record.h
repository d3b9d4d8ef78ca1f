#pragma once
// Where the probe commands put what they learn: one TEXT "key=value" per fact on layer PROBE, in the
// order learned, so that a DXF reader can check a saved drawing. Facts are held until the command
// flushes them, so that the texts never show up in the selections and entity walks being probed.

#include "qvad/api/qvad_api.h"

#include <string>

namespace hostprobe {

void record(const std::string& key, const std::string& value);
void recordStatus(const std::string& key, int status);
// Writes the held facts into the drawing; every command calls it once, on its way out.
void flushRecords();

std::string formatReal(double value);
std::string formatPoint(const qv_point point);
// The entity's handle (group 5), or "?" when the host will not say.
std::string handleOf(const qv_name entity);
// The handles of a selection set's members, sorted and comma-separated.
std::string handlesOf(const qv_name selection);

} // namespace hostprobe
