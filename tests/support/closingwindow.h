#pragma once

#include <QGenericPlugin>

/// Closes each window that comes up in a program, as by the cross of its frame. The program loads it at its start where
/// QT_QPA_GENERIC_PLUGINS names it.
class TClosingWindowPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "closingwindow.json")

public:
    QObject* create(const QString& key, const QString& settings) override;
};
