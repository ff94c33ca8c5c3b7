#pragma once

#include "tests/support/randombudget.h"
#include "tests/support/shownrecord.h"

#include <QStringList>

class QWidget;

/// Holds what a window shows against the budget that it holds, as it was read from the file that the window saved:
/// names are escaped once there. A name that a file brought twice means the first record of that name.
class TConsistency
{
public:
    /// Keeps both. Where the component lists are stale, because an entry of the tree was renamed after they were
    /// filled, only their number of entries counts.
    TConsistency(const QWidget* window, const TBudget& held, bool lists_are_stale);

    /// What differs, one line each; empty if nothing does.
    QStringList Differences();

private:
    using TComponent = TNorvexaData::TComponent;
    using TItem = TNorvexaData::TComponentItem;
    using TInstance = TNorvexaData::TComponentInstance;

    void Check_Tree();
    void Check_Component_Page();
    void Check_Identifiers(const TComponent& component);
    void Check_Dates(const TInstance* instance);
    void Check_Options(const TComponent& component);
    void Check_Item_Page();
    void Check_Item(const TItem& item);
    void Check_Expression(const TItem& item);
    void Check_Inputs();
    void Check_Variables();
    void Check_Variable(int row, const TVariable& variable);
    void Check_Groups();
    void Check_Members(const QString& group);
    void Check_Offers();

    void Compare(const QString& what, const QString& shown, const QString& held);
    void Compare(const QString& what, const QStringList& shown, const QStringList& held);
    void Compare_Number(const QString& field);
    void Compare_Box(const char* box, bool held);

    QStringList Reportable() const;

    const QWidget* d_window;
    const TBudget& d_held;
    TShownRecord d_shown;
    bool d_lists_are_stale;
    QStringList d_differences;
};
