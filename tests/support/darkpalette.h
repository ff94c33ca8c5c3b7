#pragma once

#include <QPalette>

/// The dark colours that programs with the Fusion style commonly use.
inline QPalette Dark_Palette()
{
    QPalette palette(QColor(53, 53, 53));

    palette.setColor(QPalette::Window, QColor(53, 53, 53));
    palette.setColor(QPalette::Base, QColor(42, 42, 42));
    palette.setColor(QPalette::AlternateBase, QColor(53, 53, 53));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, Qt::white);
        palette.setColor(QPalette::Disabled, role, QColor(127, 127, 127));
    }
    return palette;
}
