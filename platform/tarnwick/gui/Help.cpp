#include "Help.h"

#include "ReturnKey.h"

#include <tarnwick/base/Installation.h>

#include <QDesktopServices>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QShortcut>
#include <QToolTip>
#include <QUrl>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

class DesktopBrowser : public GuideViewer
{
public:
    bool show(const QString &file) override { return QDesktopServices::openUrl(QUrl::fromLocalFile(file)); }
};

GuideViewer *replacement = nullptr;

} // namespace

void setGuideViewer(GuideViewer *viewer)
{
    replacement = viewer;
}

QString openGuide(const QString &anchor)
{
    const QDir guide(Installation::guideFolder());
    // A page of its own leads to each anchor: desktops drop the fragment of a local file's address.
    const QString place = guide.filePath(u"go/"_s + anchor + u".html"_s);
    const QString page = !anchor.isEmpty() && QFileInfo::exists(place) ? place : guide.filePath(u"index.html"_s);
    if (!QFileInfo::exists(page))
        return u"The guide is not installed in \"%1\"."_s.arg(QDir::toNativeSeparators(guide.path()));
    DesktopBrowser browser;
    if (!(replacement ? *replacement : browser).show(page))
        return u"The desktop's browser could not be started. The guide is \"%1\"."_s.arg(
            QDir::toNativeSeparators(page));
    return {};
}

QString messageAnchor(int number)
{
    return u"message-%1"_s.arg(number);
}

QPushButton *makeHelpButton(QDialog &dialog, const std::function<void(const QString &)> &report)
{
    auto *button = new QPushButton(u"Help"_s);
    button->setObjectName(u"help"_s);
    button->setToolTip(u"Open the guide at this dialog (F1)"_s);
    button->setAutoDefault(false);
    pressWithReturn(button);
    const auto open = [&dialog, button, report] {
        const QString problem = openGuide(dialog.objectName());
        if (problem.isEmpty())
            return;
        if (report)
            report(problem);
        else
            QToolTip::showText(button->mapToGlobal(QPoint()), problem, button);
    };
    QObject::connect(button, &QPushButton::clicked, &dialog, open);
    auto *key = new QShortcut(QKeySequence(Qt::Key_F1), &dialog);
    QObject::connect(key, &QShortcut::activated, &dialog, open);
    return button;
}

void addHelp(QDialog &dialog, QDialogButtonBox &buttons, const std::function<void(const QString &)> &report)
{
    buttons.addButton(makeHelpButton(dialog, report), QDialogButtonBox::HelpRole);
}

} // namespace tarnwick
