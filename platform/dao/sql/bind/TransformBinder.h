#pragma once
#include "QueryBinder.h"

namespace dao::sql::bound {

/// Binds a cross table: TRANSFORM value SELECT row heads ... PIVOT expression [IN (headings)].
class TransformBinder
{
public:
    explicit TransformBinder(BindContext &context)
        : m_context(context)
    {
    }

    Transform bind(const ast::Transform &node);
    /// Binds it as a source of another query, with all columns: dynamic headings are read from the data. Headings that
    /// depend on parameters without values are left out.
    std::shared_ptr<Select> bindSource(const ast::Transform &node);

private:
    Transform bindWith(SelectBinder &binder, const ast::Transform &node);
    void addHeadingColumn(Transform &bound, const QString &name, ExprPtr cell) const;
    void checkClauses(const ast::Transform &node) const;
    ExprPtr cell(SelectBinder &binder, const ast::Transform &node, const ExprPtr &pivot, ExprPtr heading);
    ExprPtr nullWithoutRows(ExprPtr value, const ExprPtr &filter) const;
    void addFixedHeadings(Transform &bound, SelectBinder &binder, const ast::Transform &node);
    QString headingName(const Value &value) const;

    BindContext &m_context;
};

} // namespace dao::sql::bound
