// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <filesystem>
#include <map>
#include <string>

#include "core/commands.h"
#include "core/size_presets.h"

class QComboBox;
class QSpinBox;
class QToolButton;
class QButtonGroup;

namespace wib {

class GeneralTable;

// The size dialog of File > New (size and presets) and Image > Canvas size
// (also where the old image goes and the colour of new area). Presets are
// read from "Def_Res.txt" each time it opens.
class CanvasSize : public QDialog {
    Q_OBJECT
  public:
    enum class Purpose { NewDocument, ChangeCanvas };

    CanvasSize(Purpose purpose, const std::filesystem::path& presetFile,
               const GeneralTable* swatches, QWidget* parent = nullptr);

    // Starts from these values (width, height, and for a canvas change anchor
    // and fill) and gives back what the user chose.
    void setValues(const std::map<std::string, ParamValue>& values);
    std::map<std::string, ParamValue> values() const;

  private:
    void presetChosen(int index);
    void setFill(const QColor& colour);

    Purpose purpose_;
    std::vector<SizePreset> presets_;
    QComboBox* presetList_;
    QSpinBox* width_;
    QSpinBox* height_;
    QButtonGroup* anchors_ = nullptr;
    QToolButton* fill_ = nullptr;
    QColor fillColour_ = Qt::white;
};

}  // namespace wib
