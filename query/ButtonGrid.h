#pragma once
#include <QStringList>

#include <functional>

namespace query {

/// The quick-launch buttons of the SQL editor: their labels, wrapped where necessary, in a grid of at most five
/// columns.
struct ButtonGrid
{
    static constexpr int kMostColumns = 5;

    int columns = 0;
    QStringList labels; ///< lines end with "\n"

    /// files: query files in the suite's form, none empty. width: of the editor in pixels, of which scrollBar are
    /// covered. widthOf: of a text in pixels.
    static ButtonGrid of(const QStringList &files, int width, int scrollBar,
                         const std::function<int(const QString &)> &widthOf);
    /// Room for the label of one button.
    static int room(int columns, int width, int scrollBar);
};

} // namespace query
