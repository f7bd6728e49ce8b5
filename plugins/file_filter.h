// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

// A file-dialog filter as the dialogs take it ("Targa (*.tga);;All files (*)").
// Plug-ins may also pass the classic form of description and pattern pairs
// ("Targa|*.tga|All files|*.*"); that is turned into the dialogs' form, with
// several patterns of one pair ("*.tga;*.tpic") separated by blanks.
std::string DialogFileFilter(const std::string& filter);

}  // namespace wib
