#pragma once
#include <db/dialogs/ListOpenDlg.h>
#include <ellery/TubeStates.h>
#include <functional>
#include <plans/storage/TubeSources.h>
#include <tarnwick/FileChoice.h>
#include <tarnwick/JMacro.h>

namespace plans {

/// What the dialogs of plans and lists use of the program. All references must outlive the dialog.
struct DialogSetup
{
    db::DatabaseSession &session;
    const brannock::Project &project;
    const ellery::TubeStates &tubes; ///< marks and selection of the map
    tarnwick::FileChoice &files;
    std::function<tarnwick::JMacro()> printMacros;
    QList<NamedTubes> ofMap; ///< tubes of the map to combine with
    QWidget *parent = nullptr;
    /// Asks for a name of the database; replaced in tests.
    std::function<QString(db::DatabaseSession &, const db::ListOpenDlg::Setup &, QWidget *)> chooseName =
        &db::ListOpenDlg::choose;
    /// Asks for a source of tubes out of a list; replaced in tests.
    std::function<QString(const db::ListOpenDlg::Setup &, const QStringList &names, QWidget *)> chooseSource =
        [](const db::ListOpenDlg::Setup &setup, const QStringList &names, QWidget *owner) {
            db::ListOpenDlg dialog(setup, names, owner);
            return dialog.exec() == QDialog::Accepted ? dialog.name() : QString();
        };
};

/// Lets the user choose tubes to combine with. title: of the dialog. Empty after Cancel or a reported failure.
inline std::optional<QList<ellery::TubeAddress>> chooseTubes(const DialogSetup &setup, const QString &title,
                                                             QWidget *parent)
{
    const TubeSources sources(setup.session, setup.project, setup.ofMap);
    const QString name = setup.chooseSource(
        {.title = title, .label = QStringLiteral("Tubes Of"), .column = {}, .table = {}, .initialName = {}},
        sources.names(), parent);
    if (name.isEmpty())
        return std::nullopt;
    return sources.tubes(name);
}

} // namespace plans
