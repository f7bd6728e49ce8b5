// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/clipboard_commands.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

#include "core/commands.h"
#include "core/discard_question.h"
#include "core/workspace.h"
#include "fileio/bitmap_format.h"
#include "fileio/cdib.h"

namespace wib {

namespace {

// The clipboard's picture as a packed bitmap: a bitmap offered as such, or
// any image written as one; empty when there is no picture.
QByteArray PackedBitmapFromClipboard() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr) {
        return {};
    }
    QByteArray file;
    if (data->hasFormat(QStringLiteral("image/bmp"))) {
        file = data->data(QStringLiteral("image/bmp"));
    } else if (data->hasImage()) {
        QBuffer buffer(&file);
        buffer.open(QIODevice::WriteOnly);
        qvariant_cast<QImage>(data->imageData()).save(&buffer, "BMP");
    }
    if (file.size() <= static_cast<qsizetype>(kBitmapFileHeaderSize) || !file.startsWith("BM")) {
        return {};
    }
    return file.mid(static_cast<qsizetype>(kBitmapFileHeaderSize));
}

}  // namespace

void RegisterClipboardCommands(CommandRegistry& registry) {
    registry.add({"edit.paste",
                  "&Paste",
                  "Edit",
                  "Ctrl+V",
                  {},
                  [&registry](Workspace& workspace, const ParamValues&) {
                      const QByteArray packed = PackedBitmapFromClipboard();
                      cDIB dib;
                      if (!dib.CreateFromPackedDIBPointer(
                              reinterpret_cast<const std::uint8_t*>(packed.constData()),
                              static_cast<std::size_t>(packed.size()))) {
                          workspace.host.prompter.message(
                              "The clipboard holds no picture that can be pasted.");
                          return false;
                      }
                      // The picture takes the document's place, as opening a file does.
                      return MayDiscardChanges(workspace, registry) && dib.WriteToBuffs(workspace);
                  }});
}

}  // namespace wib
