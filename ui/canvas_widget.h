#pragma once

#include <QWidget>

namespace wib {

struct Document;

// The canvas window: draws the main buffer at the document's zoom
// (100 = one image pixel per screen pixel).
class CanvasWidget : public QWidget {
    Q_OBJECT
  public:
    explicit CanvasWidget(const Document& document, QWidget* parent = nullptr);

    // Follows a change of document size or zoom.
    void updateGeometryFromDocument();
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    const Document& document_;
};

}  // namespace wib
