#include "KeywordMarks.h"

namespace app {

void KeywordMarks::highlightBlock(const QString &text)
{
    QTextCharFormat mark;
    mark.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    mark.setUnderlineColor(Qt::red);
    for (const tarnwick::JMacro::Span &span : m_macros.unknownNames(text))
        setFormat(int(span.start), int(span.length), mark);
}

} // namespace app
