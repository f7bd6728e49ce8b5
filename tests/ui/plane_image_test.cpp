// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QLabel>

#include "tests/support/pixels.h"
#include "tests/support/test_host.h"
#include "ui/plane_image.h"
#include "ui/swap_image_view.h"

namespace wib {
namespace {

TEST(PlaneImage, ConvertsTheRequestedAreaWithoutTheSpareColumnOrRow) {
    testing::TestHost host;
    host.newDocument(4, 3);
    Document& doc = host.workspace.document;
    SetPixel(doc, 3, 2, {10, 20, 30});
    SetPixel(doc, 1, 1, {1, 2, 3});

    QImage image;
    PlanesToImage(doc, QRect(0, 0, 100, 100), image);
    ASSERT_EQ(image.size(), QSize(4, 3));
    EXPECT_EQ(image.pixel(3, 2), qRgb(10, 20, 30));
    EXPECT_EQ(image.pixel(0, 0), qRgb(255, 255, 255));

    PlanesToImage(doc, QRect(1, 1, 2, 1), image);
    ASSERT_EQ(image.size(), QSize(2, 1));
    EXPECT_EQ(image.pixel(0, 0), qRgb(1, 2, 3));
}

TEST(PlaneImage, ARedrawOfTheSameSizeReusesThePicture) {
    testing::TestHost host;
    host.newDocument(4, 3);
    QImage image;
    PlanesToImage(host.workspace.document, QRect(0, 0, 4, 3), image);
    const uchar* bits = image.constBits();
    SetPixel(host.workspace.document, 0, 0, {7, 8, 9});
    PlanesToImage(host.workspace.document, QRect(0, 0, 4, 3), image);
    EXPECT_EQ(image.constBits(), bits);
    EXPECT_EQ(image.pixel(0, 0), qRgb(7, 8, 9));
}

TEST(PlaneImage, TheSwapImageWindowShowsTheSwapPlanesNotTheMainOnes) {
    testing::TestHost host;
    host.newDocument(4, 3);
    Document& doc = host.workspace.document;
    doc.SwapR.fill(40);
    doc.SwapG.fill(50);
    doc.SwapB.fill(60);
    SetPixel(doc, 0, 0, {1, 2, 3});

    SwapImageView view(doc);
    view.refresh();
    const QLabel* picture = view.findChild<QLabel*>();
    ASSERT_NE(picture, nullptr);
    const QImage shown = picture->pixmap().toImage();
    ASSERT_EQ(shown.size(), QSize(4, 3));
    EXPECT_EQ(shown.pixel(0, 0), qRgb(40, 50, 60));
    EXPECT_EQ(shown.pixel(3, 2), qRgb(40, 50, 60));
}

}  // namespace
}  // namespace wib
