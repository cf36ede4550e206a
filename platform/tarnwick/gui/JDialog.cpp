#include "JDialog.h"

#include "ElidedLabel.h"
#include "Guarded.h"
#include "Help.h"
#include "ReturnKey.h"
#include "StateKeeper.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>
#include <tarnwick/Failures.h>
#include <tarnwick/JDateTime.h>
#include <tarnwick/Messages.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

/// Milliseconds between a change and its copy, so that changes in a row are written once.
static constexpr int kDraftDelay = 300;

/// Stores a text that is being typed. A mnemonic or a key runs a command without moving the focus, so that the field or
/// cell would otherwise keep its text to itself.
static void commitTyping(QWidget *field)
{
    if (!field)
        return;
    const QPointer<QWidget> still(field);
    field->clearFocus();
    if (still && still->isVisible()) // the editor of a cell has closed
        still->setFocus();
}

JDialog::JDialog(UserPrompts &prompts, const CommandTable *table, const QString &name, QWidget *parent)
    : QDialog(parent)
    , m_prompts(prompts)
    , m_titleBar(new QHBoxLayout)
    , m_body(new QVBoxLayout)
    , m_message(new ElidedLabel)
    , m_changes(new QLabel)
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setObjectName(name);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setSizeGripEnabled(true);
    m_message->setObjectName(u"message"_s);
    m_changes->setObjectName(u"changes"_s);
    m_changes->setToolTip(u"OK stores these changes, Cancel undoes them."_s);
    if (table) {
        m_handlers = std::make_unique<CommandHandlers>(*table);
        m_handlers->setRunner([this](const CommandRow &, const std::function<void()> &work) {
            commitTyping(focusWidget());
            run(work);
        });
        m_actions = new CommandActions(*m_handlers, this);
    }
    m_draftDelay.setSingleShot(true);
    m_draftDelay.setInterval(kDraftDelay);
    connect(&m_draftDelay, &QTimer::timeout, this, &JDialog::updateDraft);
}

JDialog::~JDialog() = default;

QPushButton *JDialog::addButton(QBoxLayout &layout, const QString &text, const QString &name, const QString &tip,
                                const std::function<void()> &pressed)
{
    auto *button = new QPushButton(text);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    pressWithReturn(button);
    connect(button, &QPushButton::clicked, this, [this, pressed] {
        commitTyping(focusWidget());
        run(pressed);
    });
    layout.addWidget(button);
    return button;
}

void JDialog::finish(QWidget *first, const QSize &size)
{
    auto *layout = new QVBoxLayout(this);
    if (m_actions) {
        m_menuBar = new QMenuBar(this);
        m_actions->fillMenuBar(m_menuBar);
        layout->setMenuBar(m_menuBar);
    }
    layout->addLayout(m_titleBar);
    layout->addLayout(m_body, 1);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(m_message, 1);
    bottom->addWidget(m_changes);
    bottom->addWidget(m_buttons);
    layout->addLayout(bottom);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    addHelp(*this, *m_buttons, [this](const QString &problem) { showMessage(problem); });
    refresh();
    if (first)
        first->setFocus();
    resize(size.expandedTo(minimumSizeHint()));
    StateKeeper::keep(this);
}

void JDialog::showMessage(const QString &text)
{
    m_message->setLine(text);
}

void JDialog::refresh()
{
    setWindowTitle(isModified() ? QString(caption() + u'*') : caption());
    const int changes = changeCount();
    m_changes->setText(changes == 0   ? QString()
                       : changes == 1 ? u"1 change not stored"_s
                                      : tarnwick::format(u"%D changes not stored", changes));
    if (m_actions)
        m_actions->refresh();
    if (m_copies && !m_draftDelay.isActive())
        m_draftDelay.start();
}

bool JDialog::run(const std::function<void()> &work)
{
    const bool isDone = guarded(m_prompts, work);
    refresh();
    return isDone;
}

void JDialog::accept()
{
    close(true);
}

void JDialog::reject()
{
    close(false);
}

void JDialog::close(bool isAccepted)
{
    bool isClosing = false;
    if (isAccepted)
        commitTyping(focusWidget());
    if (!run([&] { isClosing = isAccepted ? store() : discard(); }) || !isClosing)
        return;
    m_draftDelay.stop();
    if (m_copies)
        m_copies->end();
    m_copies.reset();
    if (isAccepted)
        QDialog::accept();
    else
        QDialog::reject();
}

void JDialog::keepDrafts(const QString &owner, const QString &kind)
{
    m_copies.emplace(owner, kind);
    const auto begin = [this] { m_copies->begin(); };
    if (!attempt(m_prompts, begin, messages::kKeepDraftFailed, QString())) {
        m_copies.reset();
        return;
    }
    m_copies->offer([this](const RecoveryCopies::Left &left) {
        QString name = caption();
        const auto restore = [&] {
            const QByteArray content = left.content();
            name = draftName(content);
            const auto time = JDateTime::fromSeconds(left.time.toSecsSinceEpoch());
            switch (m_prompts.question(Buttons::YesNoCancel, messages::kAskRestoreDraft, name, time)) {
            case Answer::Yes:
                try {
                    restoreDraft(content);
                } catch (const Cancelled &) {
                    return RecoveryCopies::Decision::Keep;
                }
                m_prompts.status(messages::kRestoredDraft, name);
                return RecoveryCopies::Decision::Restore;
            case Answer::No:
                return RecoveryCopies::Decision::Discard;
            default:
                return RecoveryCopies::Decision::Keep;
            }
        };
        RecoveryCopies::Decision decision = RecoveryCopies::Decision::Damaged;
        attempt(
            m_prompts, [&] { decision = restore(); }, messages::kRestoreDraftFailed, name);
        return decision;
    });
    refresh();
}

void JDialog::updateDraft()
{
    if (!m_copies)
        return;
    try {
        m_copies->update(draft());
        m_draftProblem.clear();
    } catch (const Error &error) {
        if (m_draftProblem.isEmpty())
            m_prompts.status(messages::kKeepDraftFailed, error.text());
        m_draftProblem = error.text();
    }
}

} // namespace tarnwick
