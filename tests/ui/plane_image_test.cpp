// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "tests/support/pixels.h"
#include "tests/support/test_host.h"
#include "ui/plane_image.h"

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

}  // namespace
}  // namespace wib
