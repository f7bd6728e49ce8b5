// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/animation_file_dialogs.h"

#include <QFileDialog>
#include <QFileInfo>

#include "fileio/file_filters.h"
#include "ui/command_dialogs.h"
#include "ui/file_dialogs.h"

namespace wib {

namespace {

constexpr const char* kSequenceSaveFilter =
    "Default Targa (*.tga)|*.tga|Bmp|*.bmp|Jpg|*.jpg|Png|*.png|Psd|*.psd|Tiff|*.tif|Open "
    "EXR|*.exr";
constexpr const char* kVideoSaveFilter =
    "MP4 video (H.264)|*.mp4|WebM video (VP9)|*.webm|Animated GIF|*.gif|Animated PNG|*.png|AVI "
    "video (Motion JPEG)|*.avi";
constexpr const char* kVideoOpenFilter =
    "Videos|*.mp4 *.webm *.gif *.png *.avi *.mov *.mkv|All files|*.*";

// The entry of `filter` whose Qt form is `chosen`; the first when none is.
FilterEntry Chosen(const std::string& filter, const QString& chosen) {
    const auto entries = ParseFilter(filter);
    const QStringList shown = QtFilter(filter).split(QStringLiteral(";;"));
    const auto index = shown.indexOf(chosen);
    return entries.at(index < 0 ? 0 : static_cast<std::size_t>(index));
}

// A name typed without an extension takes the chosen entry's.
QString WithExtension(const QString& path, const FilterEntry& entry) {
    if (!QFileInfo(path).suffix().isEmpty() || entry.extension.empty()) {
        return path;
    }
    return path + QString::fromStdString(entry.extension);
}

CommandDialog SaveDialog(QWidget* parent, const char* title, const char* filter, bool withType) {
    return [parent, title, filter, withType](const CommandSpec&, auto& values) {
        QString chosen;
        const QString path = QFileDialog::getSaveFileName(parent, QString::fromLatin1(title), {},
                                                          QtFilter(filter), &chosen);
        if (path.isEmpty()) {
            return false;
        }
        const FilterEntry entry = Chosen(filter, chosen);
        values["path"] = WithExtension(path, entry).toStdString();
        if (withType) {
            values["type"] = entry.name;
        }
        return true;
    };
}

CommandDialog OpenDialog(QWidget* parent, const char* title, const char* filter) {
    return [parent, title, filter](const CommandSpec&, auto& values) {
        const QString path =
            QFileDialog::getOpenFileName(parent, QString::fromLatin1(title), {}, QtFilter(filter));
        if (path.isEmpty()) {
            return false;
        }
        values["path"] = path.toStdString();
        return true;
    };
}

}  // namespace

void SetAnimationFileDialogs(CommandDialogs& dialogs, QWidget* parent) {
    dialogs.set("anim.export_sequence", SaveDialog(parent, "Export image sequence (first file)",
                                                   kSequenceSaveFilter, true));
    dialogs.set("anim.import_sequence",
                OpenDialog(parent, "Import image sequence (first file)", kOpenFilter));
    dialogs.set("anim.export_video", SaveDialog(parent, "Export video", kVideoSaveFilter, false));
    dialogs.set("anim.import_video", OpenDialog(parent, "Import video", kVideoOpenFilter));
}

}  // namespace wib
