#pragma once
#include <QString>
#include <QVariant>

namespace tarnwick {

/// One condition of a filter row, as typed below a column's title:
///
///     plug        the cell contains "plug"; letter case does not matter
///     1R*         the cell matches the pattern (* any text, ? one character)
///     = 40        equal; "=" alone: the cell is empty
///     <> NDD      not equal; "<>" alone: the cell is not empty
///     >= 40       compared as numbers where the cell holds one, else as texts; also >, <, <=
///     20..40      from 20 to 40, both included
class GridFilter
{
public:
    GridFilter() = default;
    /// Every text is a valid condition; a text without an operator is searched for.
    explicit GridFilter(const QString &typed);

    bool isEmpty() const { return m_kind == Kind::None; }
    /// value: from GridSource::value(); text: the cell as shown.
    bool matches(const QVariant &value, const QString &text) const;

private:
    enum class Kind { None, Contains, Pattern, Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual, Between };

    void setOperand(const QString &text);
    int compare(const QVariant &value, const QString &text) const;

    Kind m_kind = Kind::None;
    QString m_text;
    double m_number = 0;
    double m_upper = 0; ///< upper limit of Between
    bool m_isNumber = false;
};

/// Converts the value to a number. Returns false for dates, empty cells and texts that are not numbers.
bool numberOf(const QVariant &value, double &number);

} // namespace tarnwick
