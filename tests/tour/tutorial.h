#pragma once

#include "tests/tour/chapter.h"
#include "tests/tour/tour.h"

#include <QStringList>

/// Follows the manual's chapter about the first budget on a fresh start. Every text that the tour types or chooses,
/// every figure that it is shown and every picture that it takes must stand in the chapter, in this order.
class TTutorial : public TTour
{
public:
    /// `files` is the folder for the budget and its exports.
    TTutorial(const QString& chapter, const QString& pictures, const QString& files);

protected:
    void Follow() override;

private:
    // The steps
    void Look_At_Start();
    void Add_Height_Gauge();
    void Add_Gauge_Items();
    void Add_Gauge_Identifier();
    void Add_Thermometer();
    void Fill_Variables();
    void Add_Shaft();
    void Add_Group();
    void Save();
    void Read_Report();
    void Choose_Gauge();
    void Export();

    // Acts that the chapter asks for, each read in it first
    void Add_Name(const QString& button, const QString& title, const QString& name, const QString& picture = QString());
    void Add_Entry(const QString& name, const QString& picture = QString());
    void Select(const QString& list, const QString& entry);
    void Enter(const QString& field, const QString& text);
    void Choose(const QString& box, const QString& entry);
    void Click_Option(const QString& option);
    void Enter_Date(const QString& field, const QString& month, const QString& day, const QString& year);
    void Export_File(const QString& button, const QString& suffix);

    // What the chapter says
    void Read(const QString& text);
    void Read_Typed(const QString& text);
    void Read_Named(const QString& text);
    void Read_Label(const QWidget* field);
    void Show_Picture(const QString& name);
    void Expect_Label(const QString& label, const QString& text);
    void Expect_Report(const QStringList& rows, const QString& status);
    void Expect_File(const QString& suffix);
    void Expect_Exported(const QStringList& lines);

    TChapter d_chapter;
    QDir d_files;
};
