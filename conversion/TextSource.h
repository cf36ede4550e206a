#pragma once
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>

namespace conversion {

/// A foreign text report as lines. Bytes are taken for UTF-8 when they are valid as such, else for code page 1252,
/// which the analysis programs wrote; a byte order mark tells of UTF-16. Lines end with LF or CR LF, in texts without
/// any LF with CR. The end-of-file mark of DOS texts (Ctrl-Z) is dropped.
class TextSource
{
public:
    /// Texts with more lines are refused: each line becomes an entry of a report, with all of its fields.
    static constexpr int kMostLines = 1'000'000;

    TextSource() = default;
    /// Reads the file. Throws tarnwick::FileError; also for one that is no text (it holds zero bytes) or has too many
    /// lines.
    explicit TextSource(const QString &machinePath);
    TextSource(const QString &name, const QByteArray &content);

    const QString &path() const { return m_path; }
    int lineCount() const { return int(m_lines.size()); }
    /// index from 0. Valid as long as this object.
    QStringView line(int index) const;
    int longestLine() const { return m_longest; }

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
    int m_longest = 0;
};

} // namespace conversion
