#include "Engine/Views/Layout.h"
#include "Gullwick/HUD/MenuBar.h"
#include "Gullwick/HUD/Palette.h"

#include <algorithm>

// How the menu bar looks.

namespace gull {

namespace {

constexpr double titlePadding = 12;
constexpr double barInset = 14;  // before the first title
constexpr double lineHeight = 26;
constexpr double separatorHeight = 11;
constexpr double linePadding = 10;
constexpr double checkColumn = 20;
constexpr double shortcutGap = 36;  // between the longest title and the shortcuts
constexpr double panelPadding = 5;
constexpr Colour barColour{0.02, 0.08, 0.1, 0.86};
constexpr Colour panelColour{0.025, 0.095, 0.115, 1};
constexpr Colour inkOnHighlight{0.01, 0.06, 0.08, 1};

View words(const std::string& words, const Colour& colour) {
    return text(words, Type::sans(13), colour);
}

double widthOf(const std::string& line) {
    return line.empty() ? 0 : Layout::measure(words(line, Palette::cream)).width;
}

View separator(double width) {
    return shape(rectangle().filled(Palette::cream.withAlpha(0.14)))
        .framed(width - 2 * linePadding, 1)
        .framed(width, separatorHeight);
}

View line(const Command& command, bool isChosen, double width, const Language& language) {
    Colour ink = Palette::cream;
    if (isChosen) ink = inkOnHighlight;
    if (!command.enabled) ink = Palette::cream.withAlpha(0.34);
    const Colour quiet = times(ink, isChosen ? 0.8 : 0.62);
    View check = command.checked ? sign(Symbol::checkMark, 11, ink) : View();
    View end = command.submenu.empty() ? words(command.shortcut.text(language), quiet)
                                       : sign(Symbol::chevronRight, 11, quiet);
    View content = row(0, Place::centre,
                       views(std::move(check).framed(checkColumn, lineHeight, Place::start),
                             words(command.title, ink), gap(), std::move(end)))
                       .padded(linePadding, 0)
                       .framed(width, lineHeight);
    if (!isChosen) return content;
    return std::move(content).behind(shape(roundedRectangle(5).filled(Palette::sea.withAlpha(0.92))));
}

/// A hanging list of commands; its lines are named `prefix` and their number.
View panel(const std::vector<Command>& commands, std::optional<std::size_t> chosen, const std::string& prefix,
           const Language& language) {
    double titles = 0;
    double ends = 12;
    for (const Command& command : commands) {
        titles = std::max(titles, widthOf(command.title));
        ends = std::max(ends, widthOf(command.shortcut.text(language)));
    }
    const double width = 2 * linePadding + checkColumn + titles + shortcutGap + ends;
    std::vector<View> lines;
    for (std::size_t i = 0; i < commands.size(); ++i) {
        if (commands[i].isSeparator()) {
            lines.push_back(separator(width));
        } else {
            lines.push_back(
                line(commands[i], chosen == i, width, language).named(prefix + std::to_string(i)));
        }
    }
    return column(0, Place::start, std::move(lines))
        .padded(panelPadding, panelPadding)
        .behind(shape(roundedRectangle(9).filled(panelColour).stroked(Palette::panelLine))
                    .shadowed(Palette::black.withAlpha(0.45), 18));
}

double linesAbove(const std::vector<Command>& commands, std::size_t index) {
    double height = 0;
    for (std::size_t i = 0; i < index; ++i) {
        height += commands[i].isSeparator() ? separatorHeight : lineHeight;
    }
    return height;
}

View placedAt(View view, double x, double y, double width, double height) {
    return std::move(view).padded(x, y, 0, 0).framed(width, height, Place::start, Place::start);
}

}  // namespace

View MenuBar::titles() const {
    std::vector<View> all;
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        const bool isOpenHere = open_ == i;
        View title =
            text(shown_[i].title, Type::sans(13, i == 0 ? FontWeight::semibold : FontWeight::regular),
                 isOpenHere ? inkOnHighlight : Palette::cream)
                .padded(titlePadding, 0)
                .framed(std::nullopt, height - 8);
        if (isOpenHere) {
            title = std::move(title).behind(shape(roundedRectangle(5).filled(Palette::sea.withAlpha(0.92))));
        } else if (hoverTitle_ == i) {
            title =
                std::move(title).behind(shape(roundedRectangle(5).filled(Palette::cream.withAlpha(0.12))));
        }
        all.push_back(std::move(title).named("menu.title." + std::to_string(i)));
    }
    return row(2, Place::centre, std::move(all));
}

View MenuBar::body(double now, double width, double windowHeight, const Language& language) const {
    const double opacity = opacity_.value(now);
    if (opacity <= 0) return {};
    View bar = row(0, Place::centre, views(titles(), gap()))
                   .padded(barInset, 0)
                   .framed(width, height)
                   .behind(shape(rectangle().filled(barColour)))
                   .under(shape(rectangle().filled(Palette::panelLine))
                              .framed(width, 1)
                              .framed(width, height, Place::centre, Place::end))
                   .named("menuBar")
                   .onLayer("menuBar", opacity);
    std::vector<View> all = views(placedAt(std::move(bar), 0, 0, width, windowHeight));
    if (const double listOpacity = listOpacity_.value(now); listOpacity > 0) {
        const List list = open_ ? List{*open_, item_, subItem_, subIsOpen_} : left_;
        if (list.menu < shown_.size()) {
            for (View& hanging : lists(list, opacity * listOpacity, width, windowHeight, language))
                all.push_back(std::move(hanging));
        }
    }
    return layers(std::move(all)).framed(width, windowHeight);
}

std::vector<View> MenuBar::lists(const List& list, double opacity, double width, double windowHeight,
                                 const Language& language) const {
    double x = barInset;
    for (std::size_t i = 0; i < list.menu; ++i) {
        const Font font = Type::sans(13, i == 0 ? FontWeight::semibold : FontWeight::regular);
        x += Layout::measure(text(shown_[i].title, font, Palette::cream)).width + 2 * titlePadding + 2;
    }
    const std::vector<Command>& commands = shown_[list.menu].commands;
    View lines = panel(commands, list.item, "menu.item.", language);
    const double listWidth = Layout::measure(lines).width;
    std::vector<View> all =
        views(placedAt(std::move(lines).named("menu.panel").onLayer("menu.panel", opacity), x, height + 3,
                       width, windowHeight));
    const bool hasSub =
        list.subIsOpen && list.item && *list.item < commands.size() && !commands[*list.item].submenu.empty();
    if (hasSub) {
        View sub = panel(commands[*list.item].submenu, list.subItem, "menu.sub.", language);
        all.push_back(placedAt(std::move(sub).named("menu.subpanel").onLayer("menu.subpanel", opacity),
                               x + listWidth - 3, height + 3 + linesAbove(commands, *list.item), width,
                               windowHeight));
    }
    return all;
}

}  // namespace gull
