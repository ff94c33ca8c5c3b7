#pragma once

#include "tests/tour/tour.h"

/// The pictures of the manual's chapters, except those of the first budget, with the example of the coordinate
/// measuring machine.
class TManualPictures : public TTour
{
public:
    /// `files` is the folder for an exported document, from which the picture of a page is made.
    TManualPictures(const QString& examples, const QString& pictures, const QString& files);

protected:
    void Follow() override;

private:
    void Look_At_Components();
    void Look_At_Expression();
    void Look_At_Variables();
    void Look_At_Groups();
    void Look_At_Report();
    void Choose_Members(const QStringList& members);
    void Look_At_Errors();
    void Export();

    QDir d_examples;
    QDir d_files;
};
