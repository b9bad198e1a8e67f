// SPDX-License-Identifier: MIT
#include <vexagpx/picture/CairoPainter.h>
#include <vexagpx/picture/Palette.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using testing::HasSubstr;
using testing::Not;
using vexagpx::Align;
using vexagpx::Area;
using vexagpx::Clip;
using vexagpx::Disc;
using vexagpx::Drawing;
using vexagpx::Label;
using vexagpx::Line;
using vexagpx::MakeTextMeasure;
using vexagpx::PaintPicture;
using vexagpx::PictureFormat;

Drawing Empty() {
    Drawing drawing;
    drawing.width = 300.0;
    drawing.height = 200.0;
    return drawing;
}

std::string Paint(const Drawing& drawing, PictureFormat format) {
    std::string bytes;
    PaintPicture(drawing, format, [&](std::string_view piece) { bytes += piece; });
    return bytes;
}

TEST(CairoPainterTest, EveryShapeIsInThePicture) {
    const auto with = [](const auto& shape) {
        Drawing drawing = Empty();
        drawing.shapes.emplace_back(shape);
        return Paint(drawing, PictureFormat::kSvg);
    };
    EXPECT_THAT(with(Line{{{10.0, 10.0}, {20.0, 30.0}}, {1.0, 0.0, 0.0}, 2.0}), HasSubstr("M 10 10 L 20 30"));
    EXPECT_THAT(with(Line{{{10.0, 10.0}, {20.0, 30.0}}, {}, 2.0, true}), HasSubstr("stroke-dasharray"));
    EXPECT_THAT(with(Area{{{1.0, 1.0}, {9.0, 1.0}, {9.0, 9.0}}, {0.0, 1.0, 0.0}}),
                HasSubstr("M 1 1 L 9 1 L 9 9 Z"));
    EXPECT_THAT(with(Disc{{50.0, 50.0}, 5.0, {}, {}, 1.0}), HasSubstr("55 50"));
    EXPECT_THAT(with(Label{{5.0, 5.0}, "text"}), HasSubstr("<use"));
}

TEST(CairoPainterTest, MarkupInTextsIsText) {
    Drawing drawing = Empty();
    drawing.title = "<script>&amp;]]>";
    drawing.shapes.emplace_back(Label{{5.0, 5.0}, "<b>x</b>"});
    const std::string svg = Paint(drawing, PictureFormat::kSvg);
    EXPECT_THAT(svg, HasSubstr("<title>&lt;script&gt;&amp;amp;]]&gt;</title>"));
    EXPECT_THAT(svg, Not(HasSubstr("<script")));
    const auto measure = MakeTextMeasure();
    EXPECT_GT(measure("<b>x</b>", 10.0, false), 2.0 * measure("x", 10.0, false));
}

TEST(CairoPainterTest, LongerAndLargerTextsAreWider) {
    const auto measure = MakeTextMeasure();
    EXPECT_EQ(measure("", 10.0, false), 0.0);
    EXPECT_GT(measure("walks", 10.0, false), measure("walk", 10.0, false));
    EXPECT_NEAR(measure("walk", 20.0, false) / measure("walk", 10.0, false), 2.0, 0.02);
}

TEST(CairoPainterTest, APdfHasTheTitleAndNoDate) {
    Drawing drawing = Empty();
    drawing.title = "A walk";
    const std::string pdf = Paint(drawing, PictureFormat::kPdf);
    EXPECT_THAT(pdf, HasSubstr("/Title (A walk)"));
    EXPECT_THAT(pdf, Not(HasSubstr("CreationDate")));
}

TEST(CairoPainterTest, WhatTheTakerThrowsPasses) {
    EXPECT_THROW(PaintPicture(Empty(), PictureFormat::kPng,
                              [](std::string_view) { throw std::runtime_error("full"); }),
                 std::runtime_error);
}

TEST(CairoPainterTest, ManyThousandSpotsAreOneUnbrokenLine) {
    Drawing drawing = Empty();
    Line line{{}, {}, 1.0};
    for (int i = 0; i < 1000; ++i)
        line.spots.push_back({i * 0.25, 50.0});
    drawing.shapes.emplace_back(line);
    const std::string svg = Paint(drawing, PictureFormat::kSvg);
    // Each piece starts where the one before ends.
    EXPECT_THAT(svg, HasSubstr("L 64 50 \""));
    EXPECT_THAT(svg, HasSubstr("M 64 50 "));
}

} // namespace
