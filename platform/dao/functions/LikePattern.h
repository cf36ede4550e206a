#pragma once
#include <QList>
#include <QString>

namespace dao::functions {

/// A pattern of the Like operator: "*" any run, "?" one character, "#" one digit, "[abc]", "[a-z]", "[!a-z]" one
/// character of a class; special characters in brackets stand for themselves. Case does not count. A pattern with an
/// unclosed bracket or a range that runs backwards matches nothing. Matching takes time in proportion to text times
/// pattern at worst, and gives up (FunctionFault 3071) where that would take seconds.
class LikePattern
{
public:
    /// Percent: the run is "%", one character "_", and "*", "?", "#" stand for themselves.
    enum class Form { Star, Percent };
    explicit LikePattern(const QString &pattern, Form form = Form::Star);
    bool matches(QStringView text) const;

private:
    struct Range
    {
        char16_t first;
        char16_t last;
    };
    struct Element
    {
        enum class Kind { Character, Any, Digit, Class, Run } kind;
        char16_t character = 0;
        bool negated = false;
        QList<Range> ranges;
    };
    bool addClass(QStringView inside);
    static bool matchesOne(const Element &element, QChar c);

    QList<Element> m_elements;
    bool m_valid = true;
};

} // namespace dao::functions
