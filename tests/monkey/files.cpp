#include "tests/monkey/files.h"

#include "tests/support/componentpages.h"
#include "tests/support/randombudget.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

const quint32 ODD_BUDGETS = 3;

// Every name stands twice: components, items, identifiers, variables and groups.
TBudget Budget_Of_Namesakes()
{
    const TBudgetFile workshop = Workshop_Budget();
    TBudget budget;

    budget.components = Components_Of(workshop.document);
    for (TNorvexaData::TComponent& component : budget.components) {
        const std::vector<TNorvexaData::TComponentItem> items = component.items;
        component.items.insert(component.items.end(), items.begin(), items.end());
        const std::vector<TNorvexaData::TComponentInstance> instances = component.instances;
        component.instances.insert(component.instances.end(), instances.begin(), instances.end());
    }
    const std::vector<TNorvexaData::TComponent> components = budget.components;
    budget.components.insert(budget.components.end(), components.begin(), components.end());
    budget.components.back().items.clear();
    budget.variables = {{"Wear", "Probe", -1, 0.0}, {"Wear", "Scale - Drift", -1, 0.0}};
    budget.groups = {{"Length", {"Probe", "Scale - Drift", "Probe"}}, {"Length", {"Nobody"}}};
    return budget;
}

QByteArray Content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TFiles::TFiles()
{
    Restore();
}

void TFiles::Restore() const
{
    Write_Budget(Workshop_Budget(), Path("workshop.norvexa"));
    Write_Budget(Sample_Budget(), Path("sample.norvexa"));
    Save_Budget(Budget_Of_Namesakes(), Path("namesakes.norvexa"));
    for (quint32 seed = 1; seed <= ODD_BUDGETS; ++seed) {
        Save_Budget(Random_Budget(seed), Path(QString("odd%1.norvexa").arg(seed)));
    }
    const QByteArray workshop = Content(Path("workshop.norvexa"));
    Write("cut.norvexa", workshop.left(workshop.size() * 2 / 3));
    Write("broken_item.norvexa", QByteArray(workshop).replace("Drift", " "));
    Write("empty.norvexa", QByteArray());
    Write("text.txt", "No budget at all\n");
    Write("plain", workshop);
    Write("plain.norvexa", workshop);
    Write("report.csv", "old");
    QDir().mkpath(Path("folder"));
    QFile::remove(Path("new.norvexa"));
}

QString TFiles::Path(const QString& name) const
{
    return d_folder.filePath(name);
}

QString TFiles::Random_Path(TRandom* random) const
{
    static const QStringList NAMES = {"workshop.norvexa",
                                      "workshop.norvexa",
                                      "workshop.norvexa",
                                      "sample.norvexa",
                                      "sample.norvexa",
                                      "namesakes.norvexa",
                                      "odd1.norvexa",
                                      "odd2.norvexa",
                                      "odd3.norvexa",
                                      "cut.norvexa",
                                      "broken_item.norvexa",
                                      "empty.norvexa",
                                      "text.txt",
                                      "plain",
                                      "plain.norvexa",
                                      "new",
                                      "new.norvexa",
                                      "folder",
                                      "no/such/folder",
                                      "report",
                                      "report.csv",
                                      "report.pdf",
                                      "%1"};
    return Path(random->Pick(NAMES));
}

QHash<QString, qint64> TFiles::Times() const
{
    QHash<QString, qint64> times;
    for (const QFileInfo& file : QDir(d_folder.path()).entryInfoList(QDir::Files)) {
        times.insert(file.filePath(), file.lastModified().toMSecsSinceEpoch());
    }
    return times;
}

QString TFiles::Name(const QString& path) const
{
    return QDir(d_folder.path()).relativeFilePath(path);
}

void TFiles::Write(const QString& name, const QByteArray& content) const
{
    QFile file(Path(name));

    if (file.open(QIODevice::WriteOnly)) {
        file.write(content);
    }
}
