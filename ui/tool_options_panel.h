// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDockWidget>
#include <QStringList>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "paint/tool_options.h"

class QFormLayout;
class QStackedWidget;

namespace wib {

class PaintSession;

// The "Tool options" panel: the options of the active tool (brush size for
// painting tools; mode, feather and anti-aliasing for selections; tolerance,
// contiguous and connectivity for fill and the wand, with the fill settings
// for fill; shape and dither for the gradient; filled for shapes; the sample
// for the eyedropper; mode and tolerance for selecting by colour; sampling and
// flips for the transform; font, size and anti-aliasing for text).
class ToolOptionsPanel : public QDockWidget {
    Q_OBJECT
  public:
    explicit ToolOptionsPanel(PaintSession& session, QWidget* parent = nullptr);
    // Shows the active tool's page with the model's values.
    void showModel();
    // A button on the page named `page` that acts on the tool (a flip).
    void addButton(const char* page, const QString& caption, std::function<void()> pressed);

  private:
    QFormLayout* page(const char* name);
    // Fields bound to one option each; `show_` reads the model into them.
    void addBrushSize(QFormLayout* form);
    void addCheck(QFormLayout* form, const QString& label, bool ToolOptions::*option);
    void addSpin(QFormLayout* form, const QString& label, int ToolOptions::*option, int low,
                 int high);
    void addFeather(QFormLayout* form);
    // A list whose entry i stands for values[i] of the option.
    void addChoice(QFormLayout* form, const QString& label, int ToolOptions::*option,
                   const QStringList& captions, std::vector<int> values);
    void addMode(QFormLayout* form);
    void addFont(QFormLayout* form);
    ToolOptions& options();
    // Tells the tools that show their options live (a transform's sampling,
    // the text editor's font) that an option changed.
    void changed();

    PaintSession& session_;
    QStackedWidget* pages_;
    std::map<std::string, int> pageIndex_;
    std::map<std::string, QFormLayout*> forms_;
    std::vector<std::function<void()>> show_;
    bool showing_ = false;  // true while fields are set from the model
};

}  // namespace wib
