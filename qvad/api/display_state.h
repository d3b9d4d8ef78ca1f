#pragma once
// There is no screen, but what a module asked the screen to show is remembered: which entities it
// highlighted or hid with qvedRedraw. Tests and the command processor read it here.
//
// qvedRedraw modes: 1 show again, 2 hide, 3 highlight, 4 end highlighting; a null entity redraws
// the whole drawing (nothing to do). qvedGrDraw draws nothing. qvedGrRead reads the next answer:
//   a point answer (typed "x,y[,z]" and the like, or a point from a feed): type 3, a QV_RT3DPOINT;
//   an empty answer (Enter): type 2, QV_RTSHORT 13;
//   any other text: type 2, QV_RTSHORT with the first character's code (the rest of the line is
//   dropped, as the keys after the first one would go to the next prompt).
// Tracking (type 5) never comes, as there is no pointer to track.

#include "qvad/api/qvad_api.h"

namespace qvad::api {

bool isHighlighted(const qv_name entity);
bool isHidden(const qv_name entity);
// The command processor forgets it all when a drawing closes or a command ends with a regeneration.
void clearDisplayState();

} // namespace qvad::api
