#pragma once

#include "tests/tour/tour.h"

/// Pictures of every page and of both dialogs, with the example of the coordinate measuring machine.
class TScreenshots : public TTour
{
public:
    TScreenshots(const QString& examples, const QString& pictures);

protected:
    void Follow() override;

private:
    void Look_At_Components();
    void Look_At_Variables();
    void Look_At_Groups();
    void Look_At_Report();
    void Look_At_Dialogs();

    QDir d_examples;
};
