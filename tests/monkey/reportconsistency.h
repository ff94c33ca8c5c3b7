#pragma once

#include "tests/support/randombudget.h"

#include <QStringList>

class QWidget;

/// Holds the rows of the report page against the budget that the window holds, as TConsistency does the other pages.
/// Values are none of its business.
class TReportConsistency
{
public:
    /// Keeps both.
    TReportConsistency(const QWidget* window, const TBudget& held);

    /// What differs, one line each; empty if nothing does, or if no report is in front.
    QStringList Differences() const;

private:
    QStringList Held_Report(const QString& group) const;
    QStringList Held_Rows(const QString& component, const QString& item) const;
    bool Find_Member(const QString& member, QString* component, QString* item) const;
    QString Reported_Identifier(const QString& component) const;
    QStringList Lost_Identifiers() const;

    const QWidget* d_window;
    const TBudget& d_held;
};
