#include "JetImport.h"

#include "JetSink.h"
#include "Messages.h"

#include <dao/values/Errors.h>
#include <db/UnfinishedFile.h>
#include <jet/JetReader.h>
#include <QDir>
#include <QFile>

namespace db {

using namespace Qt::StringLiterals;

namespace {

const QString kSource = u"DAO.Workspace"_s;

int engineNumber(jet::JetError::Reason reason)
{
    using Reason = jet::JetError::Reason;
    switch (reason) {
    case Reason::CannotOpen:
    case Reason::ReaderMissing:
        return dao::error::CannotOpenFile;
    case Reason::NotJet:
    case Reason::NewerFormat:
        return dao::error::UnrecognizedFormat;
    case Reason::OutOfMemory:
        return dao::error::OutOfResources;
    default:
        return dao::error::DatabaseDamaged;
    }
}

void refuseLosses(const QString &jetPath, const JetImportReport &report)
{
    QString losses;
    for (const jet::Remark &remark : report.remarks)
        if (remark.kind == jet::Remark::Kind::Lost)
            losses += u'\n' + remark.text;
    if (!losses.isEmpty())
        throw dao::DaoException(
            dao::error::DatabaseDamaged, kSource,
            u"The file '%1' is damaged. It cannot be read whole:"_s.arg(QDir::toNativeSeparators(jetPath)) + losses);
}

/// Reads the file once. Returns false if it must be read again with more allowances.
bool readOnce(const QString &jetPath, const QString &newPath, tarnwick::Progress *progress,
              const JetImportOptions &options, JetAllowances &allowances, JetImportReport &report)
{
    dao::Workspace workspace;
    dao::Database database(workspace);
    JetSink sink(database, allowances, report, newPath, progress,
                 tarnwick::format(messages::kReadingJet.text, QDir::toNativeSeparators(jetPath)));
    jet::JetReader reader(jetPath, options.reading);
    try {
        dao::Transaction transaction(workspace);
        reader.read(sink, progress);
        report.remarks = reader.remarks() + report.remarks;
        if (!options.acceptLosses)
            refuseLosses(jetPath, report);
        sink.finish();
        transaction.commit();
        database.close();
        return true;
    } catch (const JetSink::StartAgain &) {
        return false;
    } catch (const jet::JetError &error) {
        throw dao::DaoException(engineNumber(error.reason()), kSource, error.text());
    }
}

} // namespace

bool JetImportReport::hasLosses() const
{
    return std::any_of(remarks.begin(), remarks.end(),
                       [](const jet::Remark &remark) { return remark.kind == jet::Remark::Kind::Lost; });
}

QStringList JetImportReport::remarkLines() const
{
    QStringList lines;
    for (const jet::Remark &remark : remarks)
        lines.append(remark.text);
    return lines;
}

JetImportReport importJetFile(const QString &jetPath, const QString &newPath, tarnwick::Progress *progress,
                              const JetImportOptions &options)
{
    if (QFile::exists(newPath))
        throw dao::DaoException(dao::error::DatabaseExists, kSource, u"Database already exists: '%1'."_s.arg(newPath));
    JetAllowances allowances;
    for (;;) {
        UnfinishedFile file(newPath);
        JetImportReport report;
        bool isWhole = false;
        file.fill([&] {
            isWhole = readOnce(jetPath, file.path(), progress, options, allowances, report);
            if (isWhole)
                file.finish();
        });
        if (isWhole)
            return report;
    }
}

} // namespace db
