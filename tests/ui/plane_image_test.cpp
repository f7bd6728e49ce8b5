#include <gtest/gtest.h>

#include "core/buffer_access.h"
#include "tests/support/test_host.h"
#include "ui/plane_image.h"

namespace wib {
namespace {

TEST(PlaneImage, ConvertsTheRequestedAreaWithoutTheSpareColumnOrRow) {
    testing::TestHost host;
    host.newDocument(4, 3);
    Document& doc = host.workspace.document;
    Wib_SetRGB(doc, 3, 2, 10, 20, 30);
    Wib_SetRGB(doc, 1, 1, 1, 2, 3);

    const QImage whole = PlanesToImage(doc, QRect(0, 0, 100, 100));
    ASSERT_EQ(whole.size(), QSize(4, 3));
    EXPECT_EQ(whole.pixel(3, 2), qRgb(10, 20, 30));
    EXPECT_EQ(whole.pixel(0, 0), qRgb(255, 255, 255));

    const QImage part = PlanesToImage(doc, QRect(1, 1, 2, 1));
    ASSERT_EQ(part.size(), QSize(2, 1));
    EXPECT_EQ(part.pixel(0, 0), qRgb(1, 2, 3));
}

}  // namespace
}  // namespace wib
