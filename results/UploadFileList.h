#pragma once
#include <QList>
#include <QString>
#include <tarnwick/Prompts.h>

namespace results {

/// The report files of one upload, in order: which are uploaded, and which is current.
class UploadFileList
{
public:
    struct File
    {
        QString path; ///< machine path
        bool done = false;
    };

    /// Replaces the list. No file is done; the first is current.
    void open(const QStringList &paths);
    /// Makes a file current and reports it. Returns false if the index is not in the list.
    bool select(int index, tarnwick::UserPrompts &prompts);

    const QList<File> &files() const { return m_files; }
    int current() const { return m_current; }
    /// Returns true if the current index is in the list; otherwise reports that it is not valid.
    bool checkCurrent(tarnwick::UserPrompts &prompts) const;
    void markCurrentDone();

    /// "DONE" if the file was uploaded, else empty.
    QString statusText(int index) const;

private:
    QList<File> m_files;
    int m_current = 0;
};

} // namespace results
