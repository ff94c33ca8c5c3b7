#include "src/reportrows.h"

#include "core/number.h"

#include <algorithm>
#include <iterator>

namespace {

const int VALUE_DECIMALS = 6;

} // namespace

QString Value_Text(double value)
{
    return Fixed_Text(value, VALUE_DECIMALS);
}

bool Is_Record_Variable(const QString& name)
{
    return name == "CTEc" || name == "CTEd" || name == "Lc" || name == "L";
}

TReportWidget::TReportItemData Page_Item(const TReportRow& row)
{
    TReportWidget::TReportItemData item;
    item.name = row.name;
    item.expression_type = row.expression_type;
    item.expression = row.expression;
    item.sensitivity = Value_Text(row.sensitivity);
    item.distribution = row.distribution;
    item.uc_type = row.uc_type;
    item.divisor = row.divisor;
    item.value_text = row.is_valid ? Value_Text(row.value) : QString("ERR");
    item.value = row.value;
    return item;
}

TReportWidget::TReportData Page_Record(const TReportRecord& record, bool is_variable,
                                       const std::vector<TReportRow>& rows)
{
    TReportWidget::TReportData page_record;
    page_record.name = record.component;
    page_record.identifier = record.identifier;
    page_record.is_variable = is_variable;
    std::transform(rows.begin(), rows.end(), std::back_inserter(page_record.items), Page_Item);
    return page_record;
}
