#pragma once

#include <QImage>
#include <QWidget>

namespace wib {

struct Document;

// The canvas window: draws the main buffer at the document's zoom
// (100 = one image pixel per screen pixel). Only the damaged part of the
// window is converted and drawn.
class Form1 : public QWidget {
    Q_OBJECT
  public:
    explicit Form1(const Document& document, QWidget* parent = nullptr);

    // Follows a change of document size or zoom.
    void updateGeometryFromDocument();
    // Redraws the image pixels left..right, top..bottom (inclusive).
    void refreshArea(int left, int top, int right, int bottom);
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    double scale() const;
    const Document& document_;
    QImage picture_;  // the converted damaged area, kept between redraws
};

}  // namespace wib
