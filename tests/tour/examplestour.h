#pragma once

#include "tests/tour/tour.h"

#include <QStringList>

/// The main job: opens each example, looks at every page, picks each report group, reads its rows and its status line
/// and exports it. Leaves pictures of every page, the exported files and a page of text with the figures.
class TExamplesTour : public TTour
{
public:
    TExamplesTour(const QString& examples, const QString& results);

protected:
    void Follow() override;

private:
    void Visit_Example(const QString& file);
    void Look_At_Maximised_Window(const QString& file);
    void Look_At_Pages();
    void Look_At_Components();
    void Look_At_Page(Qt::Key key, const QString& name);
    void Look_At_Groups();
    void Look_At_Reports();
    void Read_Report(const QString& group);
    void Export(const QString& button, const QString& name);
    void Take_Example_Picture(const QString& name);
    void Write_Figures();

    QDir d_examples;
    QDir d_results;
    QString d_example;
    QStringList d_figures;
};
