#pragma once

#include <QStringList>

class QWidget;

/// Holds the report that a window shows against that of a fresh window which has opened the file that the first one
/// saved: the same group with the same identifiers must give the same rows, and the same uncertainty below them.
class TReportTwin
{
public:
    /// Keeps both.
    TReportTwin(const QWidget* window, QWidget* fresh);

    /// What differs, one line each; empty if nothing does, or if no report is in front. The values count only
    /// `with_values`: a number with more digits than the file keeps gives others.
    QStringList Differences(bool with_values);

    /// Whether it has compared values.
    bool Has_Values() const { return d_has_values; }

private:
    bool Is_Complete() const;
    void Set_Up() const;
    void Choose_Identifiers() const;
    bool Choose_Identifier(const QString& component, const QString& identifier) const;
    QStringList Report(const QWidget* window, bool with_values) const;

    const QWidget* d_window;
    QWidget* d_fresh;
    bool d_has_values = false;
};
