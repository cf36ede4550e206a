#pragma once
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>

namespace conversion {

/// A foreign text report as lines. The bytes are read as UTF-8 if they are valid UTF-8, else as code page 1252, which
/// the analysis programs used; a byte order mark selects UTF-16. Lines end with LF or CR LF, or with CR if the text has
/// no LF. The DOS end-of-file character (Ctrl-Z) is removed.
class TextSource
{
public:
    /// Texts with more lines are refused, since each line becomes a report entry with all of its fields in memory.
    static constexpr int kMostLines = 1'000'000;

    TextSource() = default;
    /// Reads the file. Throws tarnwick::FileError, also if it is not a text (contains zero bytes) or has too many
    /// lines.
    explicit TextSource(const QString &machinePath);
    TextSource(const QString &name, const QByteArray &content);
    /// The first lines of a file, to be shown at once while the whole is read. Throws like the constructor.
    static TextSource head(const QString &machinePath);

    const QString &path() const { return m_path; }
    int lineCount() const { return int(m_lines.size()); }
    /// index: from 0. The view is valid as long as this object.
    QStringView line(int index) const;

private:
    struct Span
    {
        qsizetype start;
        qsizetype size;
    };
    void split();
    void addLine(qsizetype start, qsizetype end);

    QString m_path;
    QString m_text;
    QList<Span> m_lines;
};

} // namespace conversion
