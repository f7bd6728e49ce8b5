// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/clipboard_commands.h"

#include <QBuffer>
#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <memory>

#include "core/commands.h"
#include "core/cut_and_crop.h"
#include "core/discard_question.h"
#include "core/merged_block.h"
#include "core/workspace.h"
#include "fileio/bitmap_format.h"
#include "fileio/cdib.h"
#include "ui/clipboard_image.h"

namespace wib {

namespace {

constexpr const char* kNoPicture = "The clipboard holds no picture that can be pasted.";

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

// The last block this program copied, kept exactly as it was (the system
// clipboard's copy goes through PNG), and the id that tells whether the
// system clipboard still holds it.
struct CopiedBlock {
    PixelBlock block;
    QString copyId;
    int copies = 0;
};

// Puts the block on the clipboard; an empty block (nothing selected) is refused.
bool Copy(Workspace& workspace, CopiedBlock& copied, PixelBlock block) {
    if (block.empty()) {
        workspace.host.prompter.message(kNothingSelected);
        return false;
    }
    copied.copyId =
        QStringLiteral("%1-%2").arg(QCoreApplication::applicationPid()).arg(++copied.copies);
    QGuiApplication::clipboard()->setMimeData(BlockMimeData(block, copied.copyId));
    copied.block = std::move(block);
    return true;
}

// What paste lays down: our own last copy while the clipboard still holds
// it, else the clipboard's picture at the place its marker names (the top
// left corner for another program's picture). Empty when there is none.
PixelBlock BlockToPaste(const CopiedBlock& copied) {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr) {
        return {};
    }
    const std::optional<BlockMarker> marker = ReadMarker(*data);
    if (marker && marker->copyId == copied.copyId && !copied.block.empty()) {
        return copied.block;
    }
    PixelBlock block = ImageToBlock(ClipboardPicture(*data));
    if (marker) {
        block.x = marker->x;
        block.y = marker->y;
    }
    return block;
}

}  // namespace

void RegisterClipboardCommands(CommandRegistry& registry) {
    auto copied = std::make_shared<CopiedBlock>();
    registry.add({"edit.cut",
                  "Cu&t",
                  "Edit",
                  "Ctrl+X",
                  {},
                  [copied](Workspace& workspace, const ParamValues&) {
                      if (!Copy(workspace, *copied, CopySelectedBlock(workspace.document))) {
                          return false;
                      }
                      ClearSelectedPixels(workspace);
                      return true;
                  },
                  true});
    registry.add({"edit.copy",
                  "&Copy",
                  "Edit",
                  "Ctrl+C",
                  {},
                  [copied](Workspace& workspace, const ParamValues&) {
                      return Copy(workspace, *copied, CopySelectedBlock(workspace.document));
                  }});
    registry.add({"edit.copy_merged",
                  "Copy &merged",
                  "Edit",
                  "Ctrl+Alt+C",
                  {},
                  [copied](Workspace& workspace, const ParamValues&) {
                      return Copy(workspace, *copied, CopyMergedBlock(workspace));
                  }});
    registry.add({"edit.paste",
                  "&Paste",
                  "Edit",
                  "Ctrl+V",
                  {},
                  [copied](Workspace& workspace, const ParamValues&) {
                      const PixelBlock block = BlockToPaste(*copied);
                      if (block.empty()) {
                          workspace.host.prompter.message(kNoPicture);
                          return false;
                      }
                      PlaceBlock(workspace.document, block, block.x, block.y);
                      return true;
                  },
                  true});
    registry.add({"edit.paste_into",
                  "Paste &into selection",
                  "Edit",
                  "Ctrl+Alt+V",
                  {},
                  [copied](Workspace& workspace, const ParamValues&) {
                      Document& doc = workspace.document;
                      const AlphaBounds box = SelectionBounds(doc);
                      if (box.empty()) {
                          workspace.host.prompter.message(kNothingSelected);
                          return false;
                      }
                      PixelBlock block = BlockToPaste(*copied);
                      if (block.empty()) {
                          workspace.host.prompter.message(kNoPicture);
                          return false;
                      }
                      ClipToMatte(block, doc.ABuffer, doc.width, doc.height, box.left, box.top);
                      PlaceBlock(doc, block, box.left, box.top);
                      return true;
                  },
                  true});
    registry.add({"edit.paste_new_image",
                  "Paste as &new image",
                  "Edit",
                  "Ctrl+Shift+V",
                  {},
                  [&registry](Workspace& workspace, const ParamValues&) {
                      const QByteArray packed = PackedBitmapFromClipboard();
                      cDIB dib;
                      if (!dib.CreateFromPackedDIBPointer(
                              reinterpret_cast<const std::uint8_t*>(packed.constData()),
                              static_cast<std::size_t>(packed.size()))) {
                          workspace.host.prompter.message(kNoPicture);
                          return false;
                      }
                      // The picture takes the document's place, as opening a file does.
                      return MayDiscardChanges(workspace, registry) && dib.WriteToBuffs(workspace);
                  }});
}

}  // namespace wib
