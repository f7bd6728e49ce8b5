// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "core/layered_picture.h"

class QLabel;
class QLineEdit;
class QToolButton;

namespace wib {

// One row of the layers panel: thumbnail, name, visibility eye and lock. It
// shows a layer's properties and tells what the user changed; the panel turns
// that into commands.
class LayerListRow : public QWidget {
    Q_OBJECT
  public:
    static constexpr int kThumbnailSize = 48;

    explicit LayerListRow(QWidget* parent);

    void showLayer(const LayerProperties& properties, bool current);
    void setThumbnail(const QImage& thumbnail);

    // Whether `point` (row coordinates) lies on the name, where a double-click
    // renames.
    bool onName(const QPoint& point) const;
    // Puts an editor over the name; Enter or leaving it commits, Escape
    // cancels.
    void beginRename();
    QLineEdit* nameEditor() const { return editor_; }

    QToolButton* eye() const { return eye_; }
    QToolButton* lock() const { return lock_; }
    QString name() const;

  Q_SIGNALS:
    void visibilityToggled(bool visible);
    void lockToggled(bool locked);
    void renamed(const QString& name);

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void finishRename(bool commit);

    QLabel* thumbnail_;
    QLabel* name_;
    QToolButton* eye_;
    QToolButton* lock_;
    QLineEdit* editor_ = nullptr;
    bool current_ = false;
};

}  // namespace wib
