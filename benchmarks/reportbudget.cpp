#include "benchmarks/reportbudget.h"

#include <array>
#include <stdexcept>

namespace {

constexpr int COMPONENTS = 20;
constexpr int ITEMS = 50;
constexpr int IDENTIFIERS = 3;
constexpr int REPORT_GROUPS = 10;

// As metrologists write them: readings, limits and the ways in which temperature and length come in.
constexpr std::array<const char*, 10> EXPRESSIONS = {
    "0.00045",
    "Sr/2",
    "SQRT(0.0003^2 + Sdev^2)",
    "CTEd*Td",
    "SUMSQ(0.00012, Sr/2, 0.0004*CTEm)",
    "0.0002 + 0.0015*L/1000",
    "CTEc*Tr/2",
    "(0.00035 + 0.00002*Lc)*1.2",
    "SQRT(SUMSQ(CTEm*Tg, CTEd*Tr) + 0.0000001)",
    "0.0008*L^0.5/31.6",
};

QString Numbered_Component(int component)
{
    return QString("Component %1").arg(component + 1, 2, 10, QChar('0'));
}

QString Identifier_Name(int identifier)
{
    return QString("SN %1").arg(identifier + 1);
}

TNorvexaData::TComponentItem Item(int index)
{
    TNorvexaData::TComponentItem item;
    item.name = QString("Contribution %1").arg(index + 1, 2, 10, QChar('0'));
    item.expression = EXPRESSIONS[static_cast<std::size_t>(index) % EXPRESSIONS.size()];
    item.distribution = static_cast<TNorvexaData::TDistribution>(index % 5);
    item.expression_type = index % 3 == 0 ? TNorvexaData::LENGTH_DEPENDENT_LINEAR : TNorvexaData::CONSTANT_LINEAR;
    item.uc_type = index % 2 == 0 ? TNorvexaData::UC_TYPE_A : TNorvexaData::UC_TYPE_B;
    item.sensitivity = 1.0 + index * 0.01;
    for (int identifier = 0; identifier < IDENTIFIERS; ++identifier) {
        item.replacement_items.push_back({Identifier_Name(identifier), item.expression, true});
    }
    return item;
}

TNorvexaData::TComponent Component(int index, int items)
{
    TNorvexaData::TComponent component;
    component.name = Numbered_Component(index);
    component.length = 300.0;
    component.limit_uncertainty_length = index % 2 == 1;
    for (int item = 0; item < items; ++item) {
        component.items.push_back(Item(item));
    }
    for (int identifier = 0; identifier < IDENTIFIERS; ++identifier) {
        component.instances.push_back({Identifier_Name(identifier), "Jan 1 2026", "Jan 1 2027", 300.0, 0.01});
    }
    return component;
}

std::vector<TGroup> Groups()
{
    std::vector<TGroup> groups(REPORT_GROUPS);
    for (int group = 0; group < REPORT_GROUPS; ++group) {
        groups[static_cast<std::size_t>(group)].name = QString("Group %1").arg(group + 1);
    }
    for (int component = 0; component < COMPONENTS; ++component) {
        groups.front().items << Numbered_Component(component);
        if (component / 2 > 0) {
            groups[static_cast<std::size_t>(component / 2)].items << Numbered_Component(component);
        }
    }
    return groups;
}

} // namespace

TReportBudget Report_Budget()
{
    TReportBudget budget;
    for (int index = 0; index < COMPONENTS; ++index) {
        budget.document.Add_Component(Numbered_Component(index));
        budget.document.Update_Component(Component(index, ITEMS));
    }
    budget.groups = Groups();
    budget.input_data.temperature_minimum = 19.5;
    budget.input_data.temperature_maximum = 21.0;
    budget.input_data.temperature_gradient = 0.5;
    budget.input_data.report_increment = 10.0;
    budget.input_data.report_end = 1190.0;
    return budget;
}

TReportBudget Individual_Budget(int items)
{
    TReportBudget budget;
    TNorvexaData::TComponent component = Component(0, items);
    component.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    budget.document.Add_Component(component.name);
    budget.document.Update_Component(component);
    budget.groups = {{"Items", budget.document.Enum_Reportable_Components()}};
    return budget;
}

QStringList Expressions(const TReportBudget& budget)
{
    QStringList expressions;
    for (int component = 0; component < budget.document.Component_Count(); ++component) {
        for (int item = 0; item < budget.document.Component_Item_Count(component); ++item) {
            expressions << budget.document.Component_Item(component, item).expression;
        }
    }
    return expressions;
}

void Save(const TReportBudget& budget, const QString& file_name)
{
    if (!budget.document.Save(file_name, budget.variables, budget.groups, budget.input_data)) {
        throw std::runtime_error(budget.document.Last_Error().toStdString());
    }
}
