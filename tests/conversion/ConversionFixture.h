#pragma once
#include <conversion/ReportConversion.h>
#include <support/Printers.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <QDir>

/// A project with tubes of rows and columns 1 to 20 in section 0, in a temporary folder.
class ConversionTest : public ::testing::Test
{
protected:
    ConversionTest()
    {
        using namespace Qt::StringLiterals;
        qputenv("PALOMINE_DIR", folder.path(u"installation"_s).toUtf8());
        project.folder = folder.path(u"project"_s);
        QDir().mkpath(project.folder);
        project.site.siteCode = u"KLM"_s;
        project.site.compCode = u"SGA"_s;
        project.currentOutage = u"2002R"_s;
        project.steamGen.name = u"SGA"_s;
        QList<ellery::Tube> tubes;
        for (int row = 1; row <= 20; ++row) {
            for (int col = 1; col <= 20; ++col) {
                ellery::Tube tube;
                tube.address.row = qint16(row);
                tube.address.col = qint16(col);
                tubes.append(tube);
            }
        }
        project.steamGen.setTubes(tubes);
        conversion.spec.headerLines = 0;
    }
    ~ConversionTest() override { qunsetenv("PALOMINE_DIR"); }

    /// Report fields as (type, first, last).
    void setFields(std::initializer_list<std::tuple<conversion::ReportFieldType, int, int>> fields)
    {
        conversion.spec.reportFields.clear();
        for (const auto &[type, first, last] : fields) {
            conversion::ConvField field;
            field.type = qint32(type);
            field.firstColumn = first;
            field.lastColumn = last;
            conversion.spec.reportFields.append(field);
        }
    }

    const QList<brannock::ReportEntry> &convert(const QString &text, const QString &name = QStringLiteral("text.txt"))
    {
        conversion.convertFile(folder.writeText(name, text));
        return conversion.report().entries;
    }

    QStringList remarks() const
    {
        QStringList texts;
        for (const conversion::Remark &remark : conversion.remarks().kept())
            texts.append(QString::number(remark.line) + QStringLiteral(": ") + remark.text);
        return texts;
    }

    support::TemporaryFolder folder;
    brannock::Project project;
    conversion::ReportConversion conversion{project};
};
