// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <map>
#include <string>

#include "core/commands.h"

class QWidget;

namespace wib {

class Prompter;

// The program's filter ("Bmp|*.bmp|Png|*.png") in Qt's form
// ("Bmp (*.bmp);;Png (*.png)").
QString QtFilter(const std::string& filter);

// The values of file.open as the File menu asks for them: the "Open a file"
// dialog, starting at `startPath`, gives the path and, by its filter, the type.
// False when cancelled.
bool AskOpenValues(QWidget* parent, const std::string& startPath,
                   std::map<std::string, ParamValue>& values);

// The values of file.save: the "Save a file" dialog gives the path and the
// type; "Default Targa" then asks for the pixel format (TargaOptions), "Jpg"
// for the quality, whose Cancel says "Save canceled". False when cancelled.
bool AskSaveValues(QWidget* parent, Prompter& prompter, const std::string& startPath,
                   std::map<std::string, ParamValue>& values);

}  // namespace wib
