#include "benchmarks/largebudget.h"

#include <QDomDocument>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

constexpr int COMPONENTS = 200;
constexpr int ITEMS = 20;

// So few items that the file of the many components stays below the largest that is read.
constexpr int FEW_COMPONENTS = 1'000;
constexpr int MANY_COMPONENTS = 10'000;
constexpr int FEW_ITEMS = 2;

class TLargeBudgetFile
{
public:
    TLargeBudgetFile(int components, int items) : d_budget(components, items) { Save(); }

    bool Save() const { return d_budget.Save(Name(), d_budget.variables, d_budget.groups, d_budget.input_data); }

    bool Load() const
    {
        TNorvexa document;
        std::vector<TVariable> variables;
        std::vector<TGroup> groups;
        TInputData input_data;

        return document.Load(Name(), &variables, &groups, &input_data) && document.Component_Count() > 0;
    }

    QString Name() const { return d_folder.filePath("budget.norvexa"); }

    QByteArray Bytes() const
    {
        QFile file(Name());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir d_folder;
    TLargeBudget d_budget;
};

const TLargeBudgetFile& Usual_File()
{
    static const TLargeBudgetFile file(COMPONENTS, ITEMS);
    return file;
}

const TLargeBudgetFile& File_Of_Few()
{
    static const TLargeBudgetFile file(FEW_COMPONENTS, FEW_ITEMS);
    return file;
}

const TLargeBudgetFile& File_Of_Many()
{
    static const TLargeBudgetFile file(MANY_COMPONENTS, FEW_ITEMS);
    return file;
}

/// An element as a writer has it in its hands: nothing is left to do but the document's own work.
struct TElement
{
    QString name;
    QString text;
    std::vector<TElement> children;
};

TElement Element_Of(const QDomElement& node)
{
    TElement element = {node.tagName(), node.firstChild().nodeValue(), {}};
    for (QDomElement child = node.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        element.children.push_back(Element_Of(child));
    }
    return element;
}

QDomElement Built(const TElement& element, QDomDocument* document)
{
    QDomElement node = document->createElement(element.name);
    if (!element.text.isEmpty()) {
        node.appendChild(document->createTextNode(element.text));
    }
    for (const TElement& child : element.children) {
        node.appendChild(Built(child, document));
    }
    return node;
}

bool Write_Bare(const TElement& root, const QString& name)
{
    QDomDocument document;
    document.appendChild(document.createProcessingInstruction("xml", R"(version="1.0" encoding="utf-8")"));
    document.appendChild(Built(root, &document));

    QFile file(name);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        return false;
    }
    QTextStream stream(&file);
    document.save(stream, 4, QDomNode::EncodingFromDocument);
    stream.flush();
    return file.error() == QFileDevice::NoError;
}

void Require(bool is_done, benchmark::State& state)
{
    if (!is_done) {
        state.SkipWithError("the file was not loaded or saved");
    }
}

// Loading

void Load_Program(benchmark::State& state)
{
    const TLargeBudgetFile& file = Usual_File();
    while (state.KeepRunning()) {
        Require(file.Load(), state);
    }
}
BENCHMARK(Load_Program)->Name("Files/load/program")->Unit(benchmark::kMillisecond);

void Load_Bare(benchmark::State& state)
{
    const QByteArray bytes = Usual_File().Bytes();
    while (state.KeepRunning()) {
        QDomDocument document;
        Require(document.setContent(bytes), state);
    }
}
BENCHMARK(Load_Bare)->Name("Files/load/bare")->Unit(benchmark::kMillisecond);

void Load_Many(benchmark::State& state)
{
    const TLargeBudgetFile& file = File_Of_Many();
    while (state.KeepRunning()) {
        Require(file.Load(), state);
    }
}
BENCHMARK(Load_Many)->Name("Files/load_10000/program")->Unit(benchmark::kMillisecond);

void Load_Few(benchmark::State& state)
{
    const TLargeBudgetFile& file = File_Of_Few();
    while (state.KeepRunning()) {
        for (int done = 0; done < MANY_COMPONENTS; done += FEW_COMPONENTS) {
            Require(file.Load(), state);
        }
    }
}
BENCHMARK(Load_Few)->Name("Files/load_10000/bare")->Unit(benchmark::kMillisecond);

// Saving

void Save_Program(benchmark::State& state)
{
    const TLargeBudgetFile& file = Usual_File();
    while (state.KeepRunning()) {
        Require(file.Save(), state);
    }
}
BENCHMARK(Save_Program)->Name("Files/save/program")->Unit(benchmark::kMillisecond);

void Save_Bare(benchmark::State& state)
{
    QDomDocument document;
    document.setContent(Usual_File().Bytes(), true);
    const TElement root = Element_Of(document.documentElement());
    const QTemporaryDir folder;

    while (state.KeepRunning()) {
        Require(Write_Bare(root, folder.filePath("bare.xml")), state);
    }
}
BENCHMARK(Save_Bare)->Name("Files/save/bare")->Unit(benchmark::kMillisecond);

void Save_Many(benchmark::State& state)
{
    const TLargeBudgetFile& file = File_Of_Many();
    while (state.KeepRunning()) {
        Require(file.Save(), state);
    }
}
BENCHMARK(Save_Many)->Name("Files/save_10000/program")->Unit(benchmark::kMillisecond);

void Save_Few(benchmark::State& state)
{
    const TLargeBudgetFile& file = File_Of_Few();
    while (state.KeepRunning()) {
        for (int done = 0; done < MANY_COMPONENTS; done += FEW_COMPONENTS) {
            Require(file.Save(), state);
        }
    }
}
BENCHMARK(Save_Few)->Name("Files/save_10000/bare")->Unit(benchmark::kMillisecond);

} // namespace
