// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

class CommandRegistry;
class Workspace;

// The question's text: `Save changes to "<name>"?` with the document's file
// name without its folder, or "Untitled".
std::string SaveChangesQuestion(const std::string& fileName);

// Asked by everything that would throw the document's unsaved changes away
// (Exit, New, Open, Free animation). With no unsaved changes it asks nothing
// and says go on. Save runs File > Save as the menu does (Save As for a
// document with no file yet) and goes on only when that left nothing
// unsaved; Don't Save goes on; Cancel stops and changes nothing.
bool MayDiscardChanges(Workspace& workspace, const CommandRegistry& commands);

}  // namespace wib
