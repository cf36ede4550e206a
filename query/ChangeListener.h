#pragma once
#include <QString>

namespace query {

/// Is told about every change that statements and edited cells make in the database, so that a transaction can begin
/// with the first one.
class ChangeListener
{
public:
    virtual ~ChangeListener() = default;
    /// Called before a change. Returns false if it must not be made; the reason was reported.
    virtual bool beginChange() = 0;
    /// Called after it. what: for a list of changes. rows: number of changed rows; 0 for a definition.
    virtual void endChange(const QString &what, int rows) = 0;
    /// Called instead if nothing was changed.
    virtual void changeFailed() = 0;
};

/// One change. It failed unless done() was called.
class Change
{
public:
    /// listener: may be null.
    explicit Change(ChangeListener *listener)
        : m_isAllowed(!listener || listener->beginChange())
        , m_listener(m_isAllowed ? listener : nullptr)
    {
    }
    ~Change()
    {
        if (m_listener)
            m_listener->changeFailed();
    }
    Change(const Change &) = delete;
    Change &operator=(const Change &) = delete;

    bool isAllowed() const { return m_isAllowed; }
    void done(const QString &what, int rows)
    {
        if (m_listener)
            m_listener->endChange(what, rows);
        m_listener = nullptr;
    }

private:
    bool m_isAllowed;
    ChangeListener *m_listener;
};

} // namespace query
