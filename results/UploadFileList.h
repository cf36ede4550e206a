#pragma once
#include <QList>
#include <QString>
#include <tarnwick/Prompts.h>

namespace results {

/// The report files of one upload: in order, each uploaded or not, and which is the current one.
class UploadFileList
{
public:
    struct File
    {
        QString path; ///< of the machine
        bool done = false;
    };

    /// Replaces the list; none is done, the first is current.
    void open(const QStringList &paths);
    /// Makes a file current and says so. False for an index that is not in the list.
    bool select(int index, tarnwick::UserPrompts &prompts);

    const QList<File> &files() const { return m_files; }
    int current() const { return m_current; }
    /// True when the current index is in the list; otherwise says that it is not valid.
    bool checkCurrent(tarnwick::UserPrompts &prompts) const;
    void markCurrentDone();

    /// "DONE" for a file that was uploaded, else empty.
    QString statusText(int index) const;

private:
    QList<File> m_files;
    int m_current = 0;
};

} // namespace results
