// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/clipboard_image.h"

#include <QBuffer>
#include <QMimeData>
#include <QStringList>

#include "core/document_limits.h"

namespace wib {

namespace {

const QString kPngType = QStringLiteral("image/png");
const QString kMarkerType = QStringLiteral("application/x-wibbleton-block");

}  // namespace

QImage BlockToImage(const PixelBlock& block) {
    QImage image(block.width(), block.height(), QImage::Format_ARGB32);
    for (int y = 0; y < block.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < block.width(); ++x) {
            line[x] =
                qRgba(block.R.row(y)[x], block.G.row(y)[x], block.B.row(y)[x], block.A.row(y)[x]);
        }
    }
    return image;
}

PixelBlock ImageToBlock(const QImage& picture) {
    PixelBlock block;
    if (picture.isNull() || DocumentSizeProblem(picture.width(), picture.height())) {
        return block;
    }
    const QImage image = picture.convertToFormat(QImage::Format_ARGB32);
    const int ubX = image.width() - 1;
    const int ubY = image.height() - 1;
    block.R = Plane::Uninitialized(ubX, ubY);
    block.G = Plane::Uninitialized(ubX, ubY);
    block.B = Plane::Uninitialized(ubX, ubY);
    block.A = Plane::Uninitialized(ubX, ubY);
    for (int y = 0; y <= ubY; ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x <= ubX; ++x) {
            block.R.row(y)[x] = static_cast<std::uint8_t>(qRed(line[x]));
            block.G.row(y)[x] = static_cast<std::uint8_t>(qGreen(line[x]));
            block.B.row(y)[x] = static_cast<std::uint8_t>(qBlue(line[x]));
            block.A.row(y)[x] = static_cast<std::uint8_t>(qAlpha(line[x]));
        }
    }
    return block;
}

QMimeData* BlockMimeData(const PixelBlock& block, const QString& copyId) {
    const QImage image = BlockToImage(block);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");

    auto* data = new QMimeData;
    data->setImageData(image);
    data->setData(kPngType, png);
    data->setData(kMarkerType,
                  QStringLiteral("%1 %2 %3").arg(copyId).arg(block.x).arg(block.y).toUtf8());
    return data;
}

std::optional<BlockMarker> ReadMarker(const QMimeData& data) {
    if (!data.hasFormat(kMarkerType)) {
        return std::nullopt;
    }
    const QStringList parts = QString::fromUtf8(data.data(kMarkerType)).split(QLatin1Char(' '));
    if (parts.size() != 3) {
        return std::nullopt;
    }
    bool xRead = false;
    bool yRead = false;
    BlockMarker marker{parts[0], parts[1].toInt(&xRead), parts[2].toInt(&yRead)};
    if (!xRead || !yRead) {
        return std::nullopt;
    }
    return marker;
}

QImage ClipboardPicture(const QMimeData& data) {
    if (data.hasFormat(kPngType)) {
        const QImage image = QImage::fromData(data.data(kPngType), "PNG");
        if (!image.isNull()) {
            return image;
        }
    }
    if (data.hasImage()) {
        return qvariant_cast<QImage>(data.imageData());
    }
    return {};
}

}  // namespace wib
