#pragma once

#include "src/pdfrow.h"

#include <QStringList>

#include <vector>

/// A part of the report that begins on a page of its own.
struct TPdfSection
{
    QStringList title; ///< its lines
    int first_row = 1; ///< the first row below the title
    std::vector<TPdfRow> rows;
};

/// One line of a row where it stands on a page.
struct TPdfPageLine
{
    int row = 1; ///< its place on the page
    bool is_heading = false;
    bool has_rule = false;
    TPdfLine texts;
};

struct TPdfPage
{
    QStringList title;
    std::vector<TPdfPageLine> lines;
};

/// The pages of the sections, each page with `row_slots` slots for rows. A section without rows has a page too.
std::vector<TPdfPage> Pdf_Pages(const std::vector<TPdfSection>& sections, int row_slots);
