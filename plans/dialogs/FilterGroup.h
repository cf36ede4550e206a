#pragma once
#include <QGroupBox>

#include <plans/TubeFilter.h>

class QComboBox;

namespace plans {

/// "Fill Mode": which tubes of the map a fill may take.
class FilterGroup : public QGroupBox
{
    Q_OBJECT
public:
    explicit FilterGroup(QWidget *parent = nullptr);
    /// A number that is no choice leaves its box empty.
    void setFilter(const TubeFilter &filter);
    TubeFilter filter() const;

Q_SIGNALS:
    /// By the user.
    void filterEdited();

private:
    TubeFilter m_filter;
    QComboBox *m_region;
    QComboBox *m_tube;
};

} // namespace plans
