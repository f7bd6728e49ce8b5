#pragma once

#include <QImage>
#include <QRect>

namespace wib {

struct Document;

// The image part (no spare column or row) of the main buffer, within `area`,
// as a 32-bit picture for drawing.
QImage PlanesToImage(const Document& document, const QRect& area);

}  // namespace wib
