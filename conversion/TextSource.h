#pragma once
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>

namespace conversion {

/// A foreign text report as lines. The bytes are read as UTF-8 if they are valid UTF-8, else as code page 1252, which
/// the analysis programs used; UTF-16 is known by its byte order mark or its zero bytes. Lines end with LF, CR LF or
/// CR, also mixed in one text. The DOS end-of-file character (Ctrl-Z) is removed.
class TextSource
{
public:
    TextSource() = default;
    /// Reads the file. Throws tarnwick::FileError, also if it is not a text (contains zero bytes) or the memory of the
    /// machine is too small for it.
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
    void addLines(qsizetype start, qsizetype end);

    QString m_path;
    QString m_text;
    QList<Span> m_lines;
};

} // namespace conversion
