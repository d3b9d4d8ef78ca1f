#pragma once

#include "tests/support/dxf_text.h"

// A complete R2000 drawing with one LINE in model space unless other entities are given.
inline std::string minimalR2000(const std::string& entities = {}, const char* codePage = "ANSI_1252") {
    return r2000DrawingText(entities.empty() ? dxfText({{0, "LINE"},
                                                        {5, "10"},
                                                        {330, "2"},
                                                        {100, "AcDbEntity"},
                                                        {8, "0"},
                                                        {100, "AcDbLine"},
                                                        {10, "1.5"},
                                                        {20, "2.25"},
                                                        {30, "0.0"},
                                                        {11, "10.0"},
                                                        {21, "20.0"},
                                                        {31, "0.0"}})
                                             : entities,
                            {}, {}, codePage);
}
