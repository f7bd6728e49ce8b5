// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTime>
#include <QWidget>

// An analogue clock face showing the time it was last given.
class ClockFace : public QWidget {
  public:
    explicit ClockFace(QWidget* parent = nullptr);
    void setTime(const QTime& time);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QTime time_;
};
