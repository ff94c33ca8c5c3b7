#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

class QTreeWidget;
class TNorvexaEditor;

/// Drives the real window by mouse and keyboard through the main job: open each example, look at every page, pick each
/// report group, read its rows and its status line, export it. Leaves a picture of every page, the exported files and a
/// page of text with the figures.
class TTour
{
public:
    TTour(const QString& examples, const QString& results);

    /// Whether every step did what a user expects of it; what did not is printed.
    bool Run();

private:
    void Visit_Example(const QString& file);
    void Look_At_Maximised_Window(const QString& file);
    void Open_File(const QString& path);
    void Turn_To_Page(Qt::Key key, const QString& name);
    void Look_At_Components();
    void Look_At_Page(Qt::Key key, const QString& name);
    void Look_At_Groups();
    void Look_At_Reports();
    void Read_Report(const QString& group);
    void Export(const char* button, const QString& name);
    void Take_Picture(const QString& name);
    void Write_Figures();
    void Expect(bool condition, const QString& what);

    template <typename TWidget>
    TWidget* Find(const char* object_name) const;

    QDir d_examples;
    QDir d_results;
    QString d_example;
    QStringList d_figures;
    TNorvexaEditor* d_window = nullptr;
    bool d_succeeded = true;
};
