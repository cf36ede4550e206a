#pragma once
#include "GridSource.h"
#include "Prompts.h"

#include <QDateTime>

namespace tarnwick {

/// The files that a dialog works through, in order: which are done, and which is current. As a table it has the columns
/// "REPORT FILE" and "STATUS"; the current file is highlighted.
class FileStatusList : public GridSource
{
public:
    struct File
    {
        QString path;        ///< machine path
        bool isDone = false; ///< for as long as the dialog is open
        QDateTime modified;  ///< when it was read
        qint64 size = 0;
    };

    /// Replaces the list. No file is done; the first is current.
    void open(const QStringList &paths);
    /// Makes a file current and reports it. Returns false if the index is not in the list.
    bool select(int index, UserPrompts &prompts);

    const QList<File> &files() const { return m_files; }
    int current() const { return m_current; }
    /// Returns true if the current index is in the list; otherwise reports that it is not valid.
    bool checkCurrent(UserPrompts &prompts) const;
    void markCurrentDone();
    /// The current file is going to be read.
    void noteRead();
    /// If another program has changed the current file after noteRead(), asks whether to read it again. Yes: read it
    /// again and store nothing; No: go on with what was read; Cancel: stop.
    Answer askIfChanged(UserPrompts &prompts) const;

    /// "DONE" or empty.
    QString statusText(int index) const;

    int rowCount() const override { return int(m_files.size()); }
    int columnCount() const override { return 2; }
    GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    RowColours colours(int row) const override;
    QString tip(int row, int column) const override;

private:
    QList<File> m_files;
    int m_current = 0;
};

} // namespace tarnwick
