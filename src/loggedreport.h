#pragma once

#include "src/reportwalk.h"

class TNorvexaEditor;

/// Writes to the log what every report writes there; the rows of the items are left to the report.
class TLoggedReport : public TReportListener
{
public:
    /// The window must outlive the report.
    explicit TLoggedReport(TNorvexaEditor* window) : d_window(window) {}

    void Record_Started(const TReportRecord& record) override;
    void Data_Variable_Set(const TReportRecord& record, const QString& name, double value) override;
    void Data_Variable_Failed(const TReportRecord& record, const QString& name) override;
    void Local_Variable_Set(const TReportRecord& record, const QString& name, double value) override;
    void Units_Mixed() override;

protected:
    TNorvexaEditor* Window() const { return d_window; }

private:
    TNorvexaEditor* d_window;
};
