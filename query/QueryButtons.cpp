#include "QueryButtons.h"

namespace query {

using namespace Qt::StringLiterals;

static const QString kFolder = u"queries\\"_s;

QueryButtons::QueryButtons(const QStringList &files)
    : m_files(files)
{
}

QStringList QueryButtons::files() const
{
    QStringList files = m_files;
    while (!files.isEmpty() && files.last().isEmpty())
        files.removeLast();
    return files;
}

void QueryButtons::setFile(int row, const QString &file)
{
    while (m_files.size() <= row)
        m_files.append(QString());
    m_files[row] = file;
}

bool QueryButtons::exchange(int row, int other)
{
    if (qMin(row, other) < 0 || qMax(row, other) >= rowCount())
        return false;
    setFile(qMax(row, other), m_files.value(qMax(row, other)));
    m_files.swapItemsAt(row, other);
    return true;
}

tarnwick::GridColumn QueryButtons::column(int) const
{
    constexpr int kWidth = 50;
    return {.title = u"FILE"_s, .width = kWidth};
}

QString QueryButtons::text(int row, int) const
{
    const QString file = m_files.value(row);
    return file.startsWith(kFolder, Qt::CaseInsensitive) ? file.sliced(kFolder.size()) : file;
}

tarnwick::RowColours QueryButtons::colours(int row) const
{
    tarnwick::RowColours colours;
    const QString file = m_files.value(row);
    if (file.isEmpty())
        colours.background = tarnwick::ColourRef(0xE9E9E9);
    else if (!file.startsWith(kFolder, Qt::CaseInsensitive))
        colours.background = tarnwick::ColourRef(0x80FFFF); // 0xFFFF80 with red in the high byte
    return colours;
}

QString QueryButtons::tip(int row, int) const
{
    const QString file = m_files.value(row);
    return file.isEmpty()                                  ? u"This button has no query."_s
           : file.startsWith(kFolder, Qt::CaseInsensitive) ? QString()
                                                           : u"The file is not in the project's folder queries."_s;
}

bool QueryButtons::setText(int row, int, const QString &text)
{
    const QString file = QString(text.trimmed()).replace(u'/', u'\\');
    // A name alone is a file of the folder.
    setFile(row, file.isEmpty() || file.contains(u'\\') ? file : kFolder + file);
    return true;
}

} // namespace query
