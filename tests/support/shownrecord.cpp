#include "tests/support/shownrecord.h"

#include "src/norvexa.h"
#include "tests/support/guiacts.h"

#include <QListWidget>
#include <QTreeWidget>

#include <algorithm>

namespace {

QString Shown_Identifier(const QWidget* window)
{
    const QStringList selected = Escaped_Texts(Child<QListWidget>(window, "identifier_list"), true);
    const bool is_one = selected.size() == 1 && selected.first() != TNorvexaData::Default_Identifier();

    return is_one ? selected.first() : QString();
}

} // namespace

TShownRecord Shown_Record(const QWidget* window)
{
    const QTreeWidgetItem* entry = Sole_Selection(window);
    TShownRecord record;

    if (entry == nullptr || entry->parent() == nullptr) {
        return record;
    }
    if (entry->parent()->parent() != nullptr) {
        record.item = Escaped(entry->text(0));
        entry = entry->parent();
    }
    record.component = Escaped(entry->text(0));
    record.identifier = Shown_Identifier(window);
    return record;
}

const QTreeWidgetItem* Sole_Selection(const QWidget* window)
{
    const QList<QTreeWidgetItem*> selected = Child<QTreeWidget>(window, "budget_tree")->selectedItems();

    return selected.size() == 1 ? selected.first() : nullptr;
}

QString Escaped(const QString& text)
{
    return text.toHtmlEscaped();
}

QString Yes_No(bool value)
{
    return value ? "yes" : "no";
}

QStringList Entry_Texts(const QListWidget* list, bool selected_only)
{
    QStringList texts;
    for (int row = 0; row < list->count(); ++row) {
        if (!selected_only || list->item(row)->isSelected()) {
            texts << list->item(row)->text();
        }
    }
    return texts;
}

QStringList Escaped_Texts(const QListWidget* list, bool selected_only)
{
    QStringList texts = Entry_Texts(list, selected_only);
    std::transform(texts.begin(), texts.end(), texts.begin(), Escaped);
    return texts;
}
