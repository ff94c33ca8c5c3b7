#pragma once

#include "share/norvexadata.h"
#include "src/norvexa.h"

#include <QString>

#include <cstddef>
#include <vector>

/// What a report evaluates as one unit: a component, or one item of it, for one identifier.
struct TReportRecord
{
    QString component;
    QString item;        ///< empty: all items of the component
    QString identifier;  ///< empty: the component itself
    double length = 0.0; ///< mm, of the component or of its identifier
    std::vector<TVariable> local_variables;
};

/// One item of a component, evaluated at one length.
struct TReportRow
{
    QString name;
    QString unit_kind;       ///< "Linear" or "Temperature"
    QString expression_type; ///< "Constant" or "Length Dependent"
    QString expression;
    double sensitivity = 0.0;
    QString distribution;
    QString uc_type;
    double divisor = 1.0;
    double value = 0.0; ///< 0 when the item does not evaluate
    bool is_valid = false;
};

/// Is told what a walk meets, in the order of the walk. What differs between the reports (log lines, rows of a page,
/// records of an export) is done here.
class TReportListener
{
public:
    virtual ~TReportListener() = default;

    virtual void Record_Started(const TReportRecord& record) = 0;

    /// The value of the component that stands behind a report data variable; the document knows it from now on.
    virtual void Data_Variable_Set(const TReportRecord& record, const QString& name, double value) = 0;

    /// The document keeps the variable's former value unless the listener sets another one.
    virtual void Data_Variable_Failed(const TReportRecord& record, const QString& name) = 0;

    virtual void Local_Variable_Set(const TReportRecord& record, const QString& name, double value) = 0;
    virtual void Item_Evaluated(const TReportRecord& record, const TReportRow& row) = 0;

    /// Linear and temperature items stand in the group; the walk ends here.
    virtual void Units_Mixed() = 0;

    virtual void Record_Finished(const TReportRecord& record, bool is_variable,
                                 const std::vector<TReportRow>& rows) = 0;

protected:
    TReportListener() = default;
    TReportListener(const TReportListener&) = default;
    TReportListener& operator=(const TReportListener&) = default;
};

/// The records of a report with the components that they name, looked up once for any number of lengths.
class TReportWalk
{
public:
    /// Document and records must outlive the walk, and neither the records nor the budget may change meanwhile. The
    /// expression variables of the document may.
    TReportWalk(TNorvexa* document, const std::vector<TReportRecord>& variable_records,
                const std::vector<TReportRecord>& group_records);

    /// Evaluates the variable records and then the group records at `length` (mm). Touches nothing but the expression
    /// variables of the document, which stay set for the records that follow and for the next length. Returns false,
    /// after Units_Mixed, when the group mixes linear and temperature items.
    bool Evaluate(double length, TReportListener* listener);

private:
    struct TRecord
    {
        const TReportRecord* record = nullptr;
        std::vector<TNorvexa::TBoundReportable> data_variables; ///< parallel to the local variables, or empty
        std::vector<TNorvexa::TBoundItem> items;
        std::vector<TReportRow> rows; ///< parallel to the items; from length to length only their values change
    };

    TRecord Bound_Record(const TReportRecord& record) const;
    void Set_Data_Variables(const TRecord& bound, double length, TReportListener* listener) const;
    void Set_Local_Variables(const TRecord& bound, double length, TReportListener* listener) const;
    bool Evaluate_Items(TRecord* bound, bool is_variable, double length, TReportListener* listener);
    bool Fits_Units(const TReportRow& row);

    TNorvexa* d_document;
    std::vector<TRecord> d_variable_records;
    std::vector<TRecord> d_group_records;
    QString d_unit_kind; ///< of the group's first item, empty before it was met
};

/// Evaluates the records at one length, as TReportWalk does.
bool Walk_Report(TNorvexa* document, const std::vector<TReportRecord>& variable_records,
                 const std::vector<TReportRecord>& group_records, double length, TReportListener* listener);

/// The value of a record's local variable at `length` (mm): "L" is the length itself, "Lc" how often the record's
/// component length fits into it, any other name keeps the value that it has.
double Local_Variable_Value(const TReportRecord& record, const TVariable& variable, double length);
