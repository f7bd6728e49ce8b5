// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "plugins/method_table.h"

namespace wib {

// The families of the method table, each in its own file.
std::vector<MethodSpec> RefreshMethods();
std::vector<MethodSpec> StatusMethods();
std::vector<MethodSpec> BufferMethods();
std::vector<MethodSpec> ProgramMethods();
std::vector<MethodSpec> PaintMethods();
std::vector<MethodSpec> FileMethods();
std::vector<MethodSpec> LayerMethods();
std::vector<MethodSpec> AnimationMethods();
std::vector<MethodSpec> EventMethods();
std::vector<MethodSpec> ColourMethods();
std::vector<MethodSpec> PenMethods();
std::vector<MethodSpec> CanvasMethods();
std::vector<MethodSpec> PaperMethods();
std::vector<MethodSpec> FreeFormMethods();
std::vector<MethodSpec> BrushStampMethods();
std::vector<MethodSpec> BrushFileMethods();
std::vector<MethodSpec> AnimatedBrushMethods();
std::vector<MethodSpec> GraphicsServerMethods();
std::vector<MethodSpec> DesktopMethods();

}  // namespace wib
