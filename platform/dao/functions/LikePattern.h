#pragma once
#include <QList>
#include <QString>

namespace dao::functions {

/// A pattern of the Like operator: "*" any number of characters, "?" one character, "#" one digit, "[abc]", "[a-z]",
/// "[!a-z]" one character of a class; special characters in brackets are literals. Case is ignored. A pattern with an
/// unclosed bracket or a descending range matches nothing. Matching takes O(text length x pattern length) steps and
/// raises FunctionFault 3071 if that would take seconds.
class LikePattern
{
public:
    /// Star: the wildcards above. Percent (ANSI): "%" any number of characters, "_" one character; "*", "?" and "#" are
    /// literals.
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
