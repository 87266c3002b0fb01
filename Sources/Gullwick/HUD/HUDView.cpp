#include "Gullwick/HUD/HUDView.h"
#include "Gullwick/Scene/Look.h"

#include "Engine/Views/Layout.h"
#include "Gullwick/HUD/BeachSelect.h"
#include "Gullwick/HUD/FindPopup.h"
#include "Gullwick/HUD/JunkCounter.h"
#include "Gullwick/HUD/Palette.h"
#include "Gullwick/HUD/ResultCard.h"
#include "Gullwick/HUD/SignalMeter.h"
#include "Gullwick/HUD/TideClock.h"
#include "Gullwick/HUD/Tray.h"

#include <algorithm>

namespace gull {

namespace {

constexpr Colour selectBackdrop{0.01, 0.05, 0.07, 0.9};
// The beach behind the backdrop is dimmed by so much that neither rig nor lamp shines through.
constexpr double selectQuiet = 0.85;
constexpr double pausedDimming = 0.35;
constexpr double toastGap = 8;       // below a title that it would otherwise cover
constexpr double cardMargin = 8;     // around a card in a window that is hardly larger
constexpr double noticeBottom = 10;  // from a low toast to the window's edge

Message instructions(const Controls& controls) {
    switch (controls.kind) {
        case Controls::Kind::trackpad:
            return message(
                "slide one finger to sweep  ·  click to dig  ·  H ping (−5 s)  ·  R restart  ·  L beaches  · "
                " "
                "esc frees the pointer");
        case Controls::Kind::mouse:
            return message(
                "move the mouse to sweep  ·  click to dig  ·  H ping (−5 s)  ·  R restart  ·  L beaches");
        case Controls::Kind::controller: {
            const Controls::Buttons& buttons = controls.buttons;
            return message(
                "left stick to sweep  ·  {} to dig  ·  {} ping (−5 s)  ·  {} restart  ·  {} beaches",
                Controls::label(buttons.dig), Controls::label(buttons.ping), Controls::label(buttons.restart),
                Controls::label(buttons.beaches));
        }
    }
    return {};
}

Colour black(double opacity) {
    return Palette::black.withAlpha(opacity);
}

constexpr double titleShade = 470, tideShade = 300;  // widths, points

/// Makes what lies behind the texts of a corner of the window give way: black at `darkest`, running out to
/// the side and downward.
View cornerShade(double width, double darkest, bool right) {
    constexpr int steps = 12;
    constexpr double height = 190;
    std::vector<GradientStop> sides;
    for (int i = 0; i <= steps; ++i) {
        const double share = 1.0 * i / steps, away = right ? 1 - share : share;
        const double t = std::clamp((away - 0.3) / 0.7, 0.0, 1.0);
        sides.push_back({share, black(1 - t * t * (3 - 2 * t))});
    }
    return shape(rectangle()
                     .filled({{0, black(darkest)},
                              {0.55, black(darkest)},
                              {0.7, black(darkest * 0.72)},
                              {0.85, black(darkest * 0.28)},
                              {1, black(0)}})
                     .fadedSideways(std::move(sides)))
        .framed(width, height);
}

/// How dark the corner with the tide clock must be: on one beach a low sun glares there.
double tideDarkness(const BeachLook& look) {
    const bool glare = look.sunElevation < 10 && look.sunAzimuth > 0;
    return glare ? 0.66 : 0.52;
}

}  // namespace

View HUDView::shade() const {
    View bands =
        column(0, Place::centre,
               views(shape(rectangle().filled({{0, black(0.5)}, {0.5, black(0.18)}, {1, black(0)}}))
                         .named("shade.top")
                         .framed(width, 190)
                         .onLayer("shade.top", pose.bars),
                     gap(),
                     shape(rectangle().filled(
                               {{0, black(0)}, {0.4, black(0.3)}, {0.7, black(0.72)}, {1, black(0.82)}}))
                         .named("shade.bottom")
                         .framed(width, 160)
                         .onLayer("shade.bottom", pose.bars)))
            .framed(width, height);
    View corners =
        column(
            0, Place::centre,
            views(row(0, Place::start,
                      views(cornerShade(titleShade, 0.66, false).onLayer("shade.title", pose.bars), gap(),
                            cornerShade(tideShade, tideDarkness(BeachLook::forBeach(game.spec.number)), true)
                                .onLayer("shade.tide", pose.bars))),
                  gap()))
            .framed(width, height);
    return layers(views(std::move(bands), std::move(corners)));
}

View HUDView::title() const {
    return column(5, Place::start,
                  views(text(game.language.tr("BEACH {:02} / {:02}", game.spec.number,
                                              Campaign::beaches().size()),
                             Type::mono(11, FontWeight::semibold), Palette::coral, 3),
                        text(upperCase(game.language.translated(game.spec.name)),
                             Type::mono(20, FontWeight::bold), Palette::cream, 2),
                        text(game.language.translated(game.spec.tagline), Type::italic(13), Palette::dim)
                            .noWiderThan(380)))
        .shadowed(black(0.5), 6)
        .named("title");
}

View HUDView::bottomBar() const {
    View signal = SignalMeter{game, pose.tick}.body();
    View tray = Tray{game, icons, pose.slots}.body();
    View junk = JunkCounter{game, icons}.body();
    // If the panels do not fit, the gaps shrink first, then the padding; the panels keep their sizes as long
    // as possible.
    const double panels = SignalMeter::width + Layout::measure(tray).width + JunkCounter::width;
    const double padding = std::clamp((width - panels) / 2, 0.0, sidePadding);
    const double spacing = std::clamp((width - 2 * padding - panels) / 4, 0.0, barSpacing);
    View gauges =
        row(spacing, Place::end, views(std::move(signal), gap(), std::move(tray), gap(), std::move(junk)));
    return column(10, Place::centre,
                  views(panels > width ? std::move(gauges).shrunkToFit() : std::move(gauges),
                        text(game.language.tr(instructions(game.controls)),
                             Type::mono(10, FontWeight::regular), Palette::dim, 0.5)
                            .named("instructions")
                            .shadowed(black(0.6), 4)
                            .shrunkToFit()))
        .padded(padding, 0)
        .named("bottomBar")
        .onLayer("bottomBar", pose.bars * pose.bottomBar);
}

View HUDView::bars() const {
    View top = row(0, Place::start, views(title(), gap(), TideClock{game}.body()))
                   .padded(sidePadding, 0)
                   .named("topBar")
                   .onLayer("topBar", pose.bars);
    return column(0, Place::centre, views(std::move(top), gap(), bottomBar()))
        .padded(0, topPadding, 0, bottomPadding)
        .framed(width, height);
}

View HUDView::toast(const HudPose::Toast& toast, std::size_t index) const {
    // Centred, and clear of the pings, the only line of the tide clock that reaches down to it; narrow
    // windows have their own rules.
    const double clear = width - 2 * (sidePadding + TideClock{game}.pingsWidth() + barSpacing);
    const double room = std::max(clear, std::min(420.0, width - 2 * sidePadding));
    View line = text(toast.text, Type::mono(13, FontWeight::semibold), Palette::cream, 0.5, TextAlign::centre)
                    .padded(16, 8)
                    .behind(shape(capsule().filled(Palette::panel).stroked(Palette::sea.withAlpha(0.45))))
                    .named("toast")
                    .noWiderThan(room)
                    .onLayer("toast." + std::to_string(index), toast.opacity);
    if (toast.isLow)
        return column(0, Place::centre, views(gap(), std::move(line), gap(noticeBottom)))
            .framed(width, height);
    // In a narrow window a long tagline may reach down this far; the toast then moves.
    const ViewSize titleSize = Layout::measure(title());
    const double beside = sidePadding + titleSize.width + barSpacing;
    const bool isBeside = (width - Layout::measure(line, {room, height}).width) / 2 >= beside;
    const double top = isBeside ? toastTop : std::max(toastTop, topPadding + titleSize.height + toastGap);
    return column(0, Place::centre, views(gap(top), std::move(line), gap())).framed(width, height);
}

View HUDView::toasts(bool low) const {
    std::vector<View> lines;
    for (std::size_t i = 0; i < pose.toasts.size(); ++i)
        if (pose.toasts[i].isLow == low) lines.push_back(toast(pose.toasts[i], i));
    return layers(std::move(lines));
}

/// In the middle of the window; in a low window as far below it as the top bar needs.
View HUDView::placedCard() const {
    View card = ResultCard{ended, icons}.body();
    const double above = (height - Layout::measure(card).height) / 2;
    const double barHeight =
        std::max(Layout::measure(title()).height, Layout::measure(TideClock{game}.body()).height);
    const double down =
        std::clamp(topPadding + barHeight + toastGap - above, 0.0, std::max(above - cardMargin, 0.0));
    return std::move(card).shrunkToFit().padded(cardMargin, cardMargin).padded(0, 2 * down, 0, 0);
}

View HUDView::body() const {
    std::vector<View> all = views(shade());
    if (pose.pause > 0) {
        all.push_back(shape(rectangle().filled(black(pausedDimming)))
                          .framed(width, height)
                          .onLayer("pause.backdrop", pose.pause));
    }
    for (View& layer : views(bars(), FindPopup{pose.popup, icons, game.language}.body(), toasts(false)))
        all.push_back(std::move(layer));
    const auto present = [&](const char* name, const Colour& backdrop, View card, double opacity) {
        all.push_back(shape(rectangle().filled(backdrop))
                          .framed(width, height)
                          .onLayer(std::string(name) + ".backdrop", opacity));
        all.push_back(std::move(card).onLayer(name, opacity));
    };
    if (pose.card > 0) present("card", black(0.35), placedCard(), pose.card);
    if (pose.select > 0) {
        all.push_back(shape(rectangle().filled(black(selectQuiet)))
                          .framed(width, height)
                          .onLayer("select.quiet", pose.select));
        View select = BeachSelect{game, pose.tile}.body().shrunkToFit().padded(cardMargin, cardMargin);
        present("select", selectBackdrop, std::move(select), pose.select);
    }
    all.push_back(toasts(true));
    return layers(std::move(all)).framed(width, height);
}

void drawHud(Canvas& canvas, const HudState& state, ItemIcons& icons) {
    const HudPose pose = HudPose::atRest(state);
    const HUDView view{state, state, pose, icons, canvas.width(), canvas.height()};
    Drawing(view.body(), canvas.width(), canvas.height(), canvas.scale()).draw(canvas);
}

}  // namespace gull
