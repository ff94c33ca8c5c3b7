#include "tests/monkey/reportconsistency.h"

#include "core/number.h"
#include "tests/monkey/reportpage.h"
#include "tests/support/guiacts.h"
#include "tests/support/heldrecords.h"
#include "tests/support/shownrecord.h"

#include <QComboBox>

namespace {

QString Line(const QStringList& texts)
{
    return texts.mid(0, Report_Page::VALUE).join(", ");
}

QStringList Lines(const std::vector<QStringList>& rows)
{
    QStringList lines;
    for (const QStringList& row : rows) {
        lines << Line(row);
    }
    return lines;
}

QString Item_Line(const TNorvexaData::TComponentItem& item, const QString& expression)
{
    return Line({item.name, QString(), Is_Length_Dependent(item) ? "Length Dependent" : "Constant", expression,
                 Fixed_Text(item.sensitivity, 6), TNorvexa().Distribution_Type(item.distribution)});
}

} // namespace

TReportConsistency::TReportConsistency(const QWidget* window, const TBudget& held) : d_window(window), d_held(held) {}

// A report is brought up to date when its page comes to the front. What its variables stand for comes before the rows
// of its group, and only with them.
QStringList TReportConsistency::Differences() const
{
    if (!Report_Page::Is_Shown(d_window)) {
        return {};
    }
    const QStringList shown = Lines(Report_Page::Rows(d_window));
    const QStringList held = Held_Report(Escaped(Child<QComboBox>(d_window, "report_group")->currentText()));
    const int of_variables = held.isEmpty() ? 0 : std::max(0, shown.size() - held.size());
    const QStringList of_group = shown.mid(of_variables);
    QStringList differences = Lost_Identifiers();

    if (of_group != held) {
        differences << QString("report: shown <%1>, held <%2>").arg(of_group.join(" | "), held.join(" | "));
    }
    return differences;
}

// A member that is gone ends the report.
QStringList TReportConsistency::Held_Report(const QString& group) const
{
    const TGroup* held = Named(d_held.groups, group);
    QStringList rows;

    for (const QString& member : held == nullptr ? QStringList() : held->items) {
        QString component;
        QString item;
        if (!Find_Member(member, &component, &item)) {
            break;
        }
        rows << Held_Rows(component, item);
    }
    return rows;
}

// The first of that name; `item` is empty for a whole component.
bool TReportConsistency::Find_Member(const QString& member, QString* component, QString* item) const
{
    for (const TNorvexaData::TComponent& record : d_held.components) {
        *component = record.name;
        *item = QString();
        if (record.mode == TNorvexaData::UC_MODE_SUM) {
            if (record.name == member) {
                return true;
            }
            continue;
        }
        for (const TNorvexaData::TComponentItem& candidate : record.items) {
            *item = candidate.name;
            if (record.name + " - " + candidate.name == member) {
                return true;
            }
        }
    }
    return false;
}

QStringList TReportConsistency::Held_Rows(const QString& component, const QString& item) const
{
    const QString identifier = Reported_Identifier(component);
    const std::vector<TNorvexaData::TComponentItem>& items = Named(d_held.components, component)->items;
    QStringList rows;

    for (const TNorvexaData::TComponentItem& record : items) {
        if (item.isEmpty() || record.name == item) {
            rows << Item_Line(record, Applied_Expression(*Named(items, record.name), identifier));
        }
    }
    if (!rows.isEmpty()) {
        rows.prepend(Line({component, identifier, QString(), QString(), QString(), QString()}));
    }
    return rows;
}

// As the component's first row shows it.
QString TReportConsistency::Reported_Identifier(const QString& component) const
{
    for (const QStringList& row : Report_Page::Rows(d_window)) {
        if (row.at(Report_Page::NAME) == component && !row.at(Report_Page::IDENTIFIER).isEmpty()) {
            return row.at(Report_Page::IDENTIFIER);
        }
    }
    return QString();
}

QStringList TReportConsistency::Lost_Identifiers() const
{
    QStringList lost;
    for (const QStringList& row : Report_Page::Rows(d_window)) {
        const TNorvexaData::TComponent* component = Named(d_held.components, row.at(Report_Page::NAME));
        const QString& identifier = row.at(Report_Page::IDENTIFIER);
        const QStringList held = component == nullptr ? QStringList() : Names_Of(component->instances);

        if (!identifier.isEmpty() && identifier != TNorvexaData::Default_Identifier() && !held.contains(identifier)) {
            lost << QString("report: %1 has no identifier <%2>").arg(row.at(Report_Page::NAME), identifier);
        }
    }
    return lost;
}
