#pragma once
#include <QList>
#include <QString>

namespace conversion {

// Kinds of remarks that a check of the finished entries finds, too.
inline const QString kUnknownTube = QStringLiteral("unknown tube");
inline const QString kNoLandmark = QStringLiteral("no landmark");

/// A remark on a converted text, for the reader of the report. It does not change the conversion.
struct Remark
{
    QString file;
    int line = 0; ///< from 1; 0: the whole file
    QString text;
    QString kind; ///< a few words: "short line"

    /// "file, line 12: text"
    QString toString() const;
};

/// The remarks of one conversion. Above a limit they are only counted: a text that is read with the wrong spec has one
/// on every line.
class Remarks
{
public:
    static constexpr int kMostKept = 1000;

    void clear();
    void add(const QString &file, int line, const QString &text, const QString &kind);
    /// Counts a remark that is not kept because isFull(), so that its text need not be made.
    void addUnkept() { ++m_count; }
    bool isFull() const { return m_kept.size() >= kMostKept; }
    const QList<Remark> &kept() const { return m_kept; }
    int count() const { return m_count; }
    bool isEmpty() const { return m_count == 0; }

private:
    QList<Remark> m_kept;
    int m_count = 0;
};

} // namespace conversion
