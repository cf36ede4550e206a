#include "TablePdf.h"

#include <QBuffer>
#include <QPdfWriter>

namespace tarnwick {

using namespace Qt::StringLiterals;

QByteArray tablePdf(const TablePrint &print, const QPageSize &paper, const QString &title, qint64 &cut,
                    Progress *progress)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setPageSize(paper);
        writer.setPageMargins({});
        writer.setResolution(TablePrint::kDpi);
        writer.setTitle(title);
        writer.setCreator(u"ARVO"_s);
        cut += print.printOn(writer, progress);
    }
    return bytes;
}

} // namespace tarnwick
