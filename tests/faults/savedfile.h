#pragma once

#include <QByteArray>
#include <QString>

#include <iosfwd>
#include <memory>

enum class TFileKind
{
    Budget,
    CSV,
    PDF
};

const char* Name_Of(TFileKind kind);
void PrintTo(TFileKind kind, std::ostream* stream);

/// A file that the program saves: a budget, or an export as CSV or PDF, made ready so that saving it does nothing but
/// write. Needs a QApplication.
class TSavedFile
{
public:
    /// `generation` tells files apart, `size` is the number of their components.
    TSavedFile(TFileKind kind, int generation, int size);
    ~TSavedFile();
    Q_DISABLE_COPY(TSavedFile)

    /// Saves as the program does and returns what the user would be told: nothing on success.
    QString Save(const QString& name) const;

    /// What a whole file holds, apart from its date.
    const QByteArray& Content() const { return d_content; }
    /// Whether `bytes` are this file, whole.
    bool Is_Whole_In(const QByteArray& bytes) const;

private:
    class TSource;
    class TBudgetSource;
    class TExportSource;

    std::unique_ptr<TSource> d_source;
    QByteArray d_content;
};
