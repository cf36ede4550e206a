#include "TablePdf.h"

#include <QIODevice>
#include <QPageSize>
#include <QPdfWriter>
#include <tarnwick/FileWriter.h>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Passes what the PDF engine produces to the one writer of files. The engine ignores failed writes; the writer keeps
/// the first failure and reports it at commit().
class AtomicFileDevice : public QIODevice
{
public:
    explicit AtomicFileDevice(const QString &path)
        : m_file(path)
    {
        open(QIODevice::WriteOnly);
    }
    bool isSequential() const override { return true; }
    void commit() { m_file.commit(); }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 size) override
    {
        try {
            m_file.write(QByteArrayView(data, size));
            return size;
        } catch (const FileError &) {
            return -1;
        }
    }

private:
    AtomicFile m_file;
};

} // namespace

qint64 storeTablePdf(const TablePrint &print, const QString &path, const QString &title, Progress *progress)
{
    AtomicFileDevice device(path);
    qint64 cut = 0;
    {
        QPdfWriter writer(&device);
        writer.setPageSize(QPageSize(print.paper(), QPageSize::Inch, {}, QPageSize::ExactMatch));
        writer.setPageMargins({});
        writer.setResolution(TablePrint::kDpi);
        writer.setTitle(title);
        writer.setCreator(u"ARVO"_s);
        cut = print.printOn(writer, progress);
    }
    device.commit();
    return cut;
}

} // namespace tarnwick
