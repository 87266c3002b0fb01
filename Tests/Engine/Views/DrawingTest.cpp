#include "Engine/Views/Drawing.h"

#include "Engine/Views/Layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace gull {
namespace {

constexpr Colour red{1, 0, 0, 1};

View box(double width, double height) {
    return shape(rectangle().filled(red)).framed(width, height);
}

Rect rectOf(const Drawing& drawing, const char* name) {
    const auto found = drawing.find(name);
    EXPECT_TRUE(found.has_value()) << name;
    return found ? found->rect : Rect{};
}

TEST(Drawing, RowsAndColumnsShareOutTheRoom) {
    const View view = column(
        0, Place::centre,
        views(row(10, Place::end,
                  views(box(20, 20).named("a"), gap(), box(30, 40).named("b"), gap(), box(50, 10).named("c")))
                  .padded(5, 7),
              gap(), box(60, 8).named("low"), gap(15)));
    const Drawing drawing(view, 300, 200, 1);
    // 300 - 2 * 5 is the row; 100 are boxes, 40 spacing, each gap has 75.
    EXPECT_EQ(rectOf(drawing, "a"), (Rect{5, 27, 20, 20}));
    EXPECT_EQ(rectOf(drawing, "b"), (Rect{5 + 20 + 10 + 75 + 10, 7, 30, 40}));
    EXPECT_EQ(rectOf(drawing, "c"), (Rect{245, 37, 50, 10}));
    EXPECT_EQ(rectOf(drawing, "low"), (Rect{120, 200 - 15 - 8, 60, 8}));
}

TEST(Drawing, ModifiersApplyInTheOrderTheyAreRead) {
    View inner = box(10, 10).named("inner").scaled(2).offset(3, 4);
    const View view = std::move(inner)
                          .framed(50, 30, Place::start, Place::end)
                          .behind(shape(capsule().filled(red)).named("back"))
                          .named("outer");
    const Drawing drawing(view, 100, 100, 1);
    EXPECT_EQ(rectOf(drawing, "outer"), (Rect{25, 35, 50, 30}));
    EXPECT_EQ(rectOf(drawing, "back"), (Rect{25, 35, 50, 30}));
    // At (25, 55), moved by (3, 4), enlarged about its centre.
    EXPECT_EQ(rectOf(drawing, "inner"), (Rect{23, 54, 20, 20}));
    EXPECT_EQ(drawing.at(30, 56, "in"), "inner");
    EXPECT_EQ(drawing.at(30, 56, "o"), "outer");
    EXPECT_EQ(drawing.at(30, 56, "x"), "");
}

TEST(Drawing, TextWrapsOrShrinksWhereItIsTooLong) {
    Font font;
    const char* words = "a line of several words that is too long for its room";
    const double whole = Layout::measure(text(words, font, red)).width;
    const ViewSize wrapped = Layout::measure(text(words, font, red).noWiderThan(whole / 2));
    EXPECT_LE(wrapped.width, whole / 2);
    EXPECT_GE(wrapped.height, 2 * Layout::measure(text("a", font, red)).height - 0.1);
    const Drawing drawing(text(words, font, red).shrunkToFit().named("shrunk"), whole / 4, 100, 1);
    EXPECT_NEAR(rectOf(drawing, "shrunk").width, whole / 4, 0.01);
    EXPECT_NEAR(std::get<Drawing::Text>(drawing.findText(words)->content).scale, 0.25, 0.001);
}

TEST(Drawing, WrappedTextIsDrawnAsItWasMeasured) {
    Font font;
    const std::string words = "Beach cleared! Keep going for the rest, or wait out the tide";
    for (double room = 120; room < 500; room += 7) {
        const Drawing drawing(text(words, font, red, 0.5, TextAlign::centre).noWiderThan(room), 600, 300, 1);
        const Drawing::Mark* mark = drawing.findText(words);
        ASSERT_NE(mark, nullptr);
        const TextSize drawn = measureText(words, std::get<Drawing::Text>(mark->content).style);
        EXPECT_NEAR(drawn.width, mark->rect.width, 0.01) << room;
        EXPECT_NEAR(drawn.height, mark->rect.height, 0.01) << room;
    }
}

TEST(Drawing, EdgesStandOnWholePixelsUnlessScaled) {
    for (const double scale : {1.0, 1.25, 2.0}) {
        const Drawing drawing(box(7, 8.3), 100, 51, scale);
        const Rect rect = drawing.marks().front().rect;
        for (const double edge : {rect.x, rect.y, rect.x + rect.width, rect.y + rect.height}) {
            EXPECT_NEAR(edge * scale, std::round(edge * scale), 1e-9) << scale;
        }
    }
}

TEST(Drawing, WhatIsFadedAwayKeepsItsPlaceAndIsNotDrawn) {
    const View view =
        row(0, Place::centre, views(box(10, 10).faded(0).named("gone"), box(10, 10).named("there")));
    const Drawing drawing(view, 20, 10, 1);
    EXPECT_EQ(drawing.marks().size(), 1U);
    EXPECT_EQ(rectOf(drawing, "there").x, 10);
    const Drawing half(box(10, 10).named("x").faded(0.5), 20, 10, 1);
    EXPECT_EQ(half.find("x")->opacity, 0.5);
}

TEST(Drawing, LayersLieInOrderAndMoveAsAWhole) {
    const View view =
        layers(views(box(100, 20).named("ground"), box(10, 10).named("low").onLayer("first", 0.5, 3.3, -4),
                     box(10, 10).named("gone").onLayer("second", 0), box(8, 8), box(6, 6).onLayer("third")));
    const Drawing drawing(view, 100, 20, 1);
    std::string order;
    std::size_t marks = 0;
    for (const Drawing::Layer& layer : drawing.layers()) {
        order += layer.name + ";";
        EXPECT_EQ(layer.first, marks) << "every mark is on a layer";
        marks = layer.last;
    }
    EXPECT_EQ(order, ";first;;third;");
    EXPECT_EQ(marks, drawing.marks().size());
    EXPECT_EQ(rectOf(drawing, "low"), (Rect{48, 1, 10, 10})) << "moved by whole pixels";
    EXPECT_EQ(drawing.find("low")->opacity, 0.5);
    EXPECT_EQ(drawing.find("gone")->opacity, 0);
    EXPECT_DEATH(Drawing(box(1, 1).onLayer("inner").faded(0.5), 9, 9, 1), "inner");
}

TEST(Drawing, DifferenceIsWhereSomethingChanged) {
    const auto build = [](double width, bool extra, double opacity) {
        std::vector<View> parts = views(box(10, 10).offset(-40, 0), box(width, 6).faded(opacity));
        if (extra) parts.push_back(box(4, 4).offset(40, 0));
        return Drawing(layers(std::move(parts)).shadowed(red, 4), 100, 20, 1);
    };
    std::vector<Rect> damage;
    const auto compare = [&damage](const Drawing& now, const Drawing& before) {
        Drawing::difference(now.marks(), before.marks(), damage);
    };
    compare(build(20, false, 1), build(20, false, 1));
    EXPECT_TRUE(damage.empty());
    compare(build(20, true, 1), build(20, false, 1));
    ASSERT_EQ(damage.size(), 1U);
    // The new box with the shadow that it may cast; the rest is left alone.
    EXPECT_EQ(damage[0], (Rect{88 - 7, 8 - 7, 4 + 14, 4 + 14}));
    damage.clear();
    compare(build(30, false, 1), build(20, false, 1));
    for (const Rect& rect : damage) EXPECT_GE(rect.x, 28) << "the box at the left did not change";
    EXPECT_EQ(damage.size(), 2U);
    damage.clear();
    compare(build(20, false, 0.5), build(20, false, 0.6));
    EXPECT_FALSE(damage.empty());
}

}  // namespace
}  // namespace gull
