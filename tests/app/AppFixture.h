#pragma once
#include <app/DBase.h>
#include <brannock/gui/TubesheetMap.h>
#include <demo/DemoProject.h>
#include <gmock/gmock.h>
#include <map/FillCommit.h>
#include <plans/PatternFill.h>
#include <QTemporaryDir>

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace app {

inline map::MapDocument &mapOf(DBase &window)
{
    return window.projectSession().map();
}

inline void addFill(DBase &window, const plans::MapFill &fill)
{
    map::addNewFill(mapOf(window), window.projectSession().fillRunner(), fill);
}

/// Adds an entry that is not computed.
template <typename Fill>
void addEntry(DBase &window, const Fill &fill)
{
    mapOf(window).change(QStringLiteral("Fill"), [&fill](map::MapEdit &edit) { edit.addEntry(fill.clone(), true); });
}

/// While fails is set, the next change that copies or compares this entry fails.
class FailingFill : public plans::PatternFill
{
public:
    static inline bool fails = false;

    std::unique_ptr<plans::MapFill> clone() const override
    {
        fail();
        return std::make_unique<FailingFill>(*this);
    }
    bool isSameAs(const plans::MapFill &other) const override
    {
        fail();
        return PatternFill::isSameAs(other);
    }

private:
    static void fail()
    {
        if (std::exchange(fails, false))
            throw std::bad_alloc();
    }
};

inline map::LegendCommands legendOf(DBase &window)
{
    return {mapOf(window), window.projectSession().fillRunner()};
}

inline void selectTubes(map::MapDocument &map, const QList<qint32> &tubes)
{
    map.change(QStringLiteral("Select"), [&tubes](map::MapEdit &edit) { edit.setSelection(tubes); });
}

inline void setHeaderText(map::MapDocument &map, QString map::MapHeader::*field, const QString &text)
{
    map::MapHeader header = map.header();
    header.*field = text;
    map.change(QStringLiteral("Header"), [&header](map::MapEdit &edit) { edit.setHeader(header); });
}

/// Answers file dialogs from a script.
class ScriptedDialogs : public tarnwick::FileDialogs
{
public:
    ScriptedDialogs()
        : tarnwick::FileDialogs(nullptr)
    {
    }
    QString next;
    QStringList asked; ///< filters and titles

    QString openFile(const tarnwick::FileChooserInfo &chooser, const QString &, const tarnwick::PathRoots &) override
    {
        return answer(QString::fromUtf16(chooser.filter));
    }
    QStringList openFiles(const tarnwick::FileChooserInfo &chooser, const QString &,
                          const tarnwick::PathRoots &) override
    {
        const QString chosen = answer(QString::fromUtf16(chooser.filter));
        return chosen.isEmpty() ? QStringList() : QStringList{chosen};
    }
    QString saveFile(const tarnwick::FileChooserInfo &chooser, const QString &, const tarnwick::PathRoots &,
                     const QString &) override
    {
        return answer(QString::fromUtf16(chooser.filter));
    }
    QString openFolder(const QString &title, const QString &) override { return answer(title); }
    QString newFile(const tarnwick::FileChooserInfo &chooser, const QString &, const tarnwick::PathRoots &) override
    {
        return answer(QString::fromUtf16(chooser.filter));
    }

private:
    QString answer(const QString &question)
    {
        asked.append(question);
        return next;
    }
};

/// An installation and a user's folder of its own for each test, and a small project made once.
class AppTest : public testing::Test
{
protected:
    AppTest()
    {
        qputenv("PALOMINE_DIR", m_installation.path().toLocal8Bit());
        qputenv("XDG_DATA_HOME", m_userData.path().toLocal8Bit());
    }

    /// The folder of the projects: that of ARVO_PLANTS if pictures show its path, otherwise a temporary one.
    static QString plants()
    {
        static const QTemporaryDir folder;
        return qEnvironmentVariable("ARVO_PLANTS", folder.path());
    }
    /// Tests change the map in memory; what reaches the disk is its database.
    static QString projectFolder()
    {
        static const QString project = [] {
            demo::DemoOptions options;
            options.tubes = 300;
            options.entries = 200;
            options.outages = 1;
            const QString path = plants() + QStringLiteral("/unit-1");
            demo::makeProject(options, path);
            return path;
        }();
        return project;
    }

    tarnwick::RecordingPrompts said;

private:
    QTemporaryDir m_installation;
    QTemporaryDir m_userData;
};

} // namespace app
