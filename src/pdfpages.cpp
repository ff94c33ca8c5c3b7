#include "src/pdfpages.h"

#include <algorithm>

namespace {

/// The slots at the foot of a page that stay empty.
constexpr int EMPTY_SLOTS = 2;

int Line_Count(const TPdfRow& row)
{
    return static_cast<int>(row.lines.size());
}

/// Fills the pages of one section.
class TSectionPages
{
public:
    TSectionPages(const TPdfSection& section, int row_slots, std::vector<TPdfPage>* pages)
        : d_rows(section.rows), d_section(section), d_row_slots(row_slots), d_pages(pages)
    {}

    void Fill()
    {
        Start_Page();
        for (std::size_t index = 0; index < d_rows.size(); ++index) {
            Forget_Headings(d_rows[index].heading_level);
            if (Needs_New_Page(index)) {
                Continue_On_New_Page();
            }
            Add_Row(d_rows[index]);
            if (d_rows[index].heading_level > 0) {
                d_headings.push_back(&d_rows[index]);
            }
        }
    }

private:
    void Start_Page()
    {
        d_pages->push_back({d_section.title, {}});
        d_next_row = d_section.first_row;
        d_is_page_fresh = true;
    }

    void Continue_On_New_Page()
    {
        Start_Page();
        if (Are_Headings_Repeated()) {
            for (const TPdfRow* heading : d_headings) {
                Add_Row(*heading);
            }
        }
        d_is_page_fresh = true;
    }

    /// A row that is longer than the page goes on on the next one.
    void Add_Row(const TPdfRow& row)
    {
        d_next_row += d_pages->back().lines.empty() ? 0 : row.blank_rows;
        for (const TPdfLine& line : row.lines) {
            if (d_next_row > Last_Row() && !d_is_page_fresh) {
                Continue_On_New_Page();
            }
            const bool is_last = &line == &row.lines.back();
            d_pages->back().lines.push_back({d_next_row++, row.heading_level > 0, row.has_rule && is_last, line});
            d_is_page_fresh = false;
        }
    }

    /// The headings that a heading of this level takes the place of.
    void Forget_Headings(int level)
    {
        while (level > 0 && !d_headings.empty() && d_headings.back()->heading_level >= level) {
            d_headings.pop_back();
        }
    }

    int Heading_Height() const
    {
        int height = 0;
        for (const TPdfRow* heading : d_headings) {
            height += Line_Count(*heading) + (height > 0 ? heading->blank_rows : 0);
        }
        return height;
    }

    /// Headings that would leave too little of the page to their rows are not.
    bool Are_Headings_Repeated() const { return Heading_Height() <= (Last_Row() - d_section.first_row) / 2; }

    bool Needs_New_Page(std::size_t index) const
    {
        const TPdfRow& row = d_rows[index];
        const int start = d_next_row + row.blank_rows;
        if (d_is_page_fresh) {
            return false;
        }
        return start > Last_Row() || start >= d_row_slots - row.clearance ||
               Belongs_On_New_Page(index, Last_Kept(index)) || Belongs_On_New_Page(index, Last_Headed(index));
    }

    /// Whether the rows fit together on a new page, but not on this one.
    bool Belongs_On_New_Page(std::size_t first, std::size_t last) const
    {
        const int blank_rows = d_rows[first].blank_rows;
        const int headings = Are_Headings_Repeated() ? Heading_Height() : 0;
        const int start_on_new_page = d_section.first_row + headings + (headings > 0 ? blank_rows : 0);

        return !Fit(first, last, d_next_row + blank_rows) && Fit(first, last, start_on_new_page);
    }

    std::size_t Last_Kept(std::size_t index) const
    {
        return std::min(index + static_cast<std::size_t>(d_rows[index].kept_rows), d_rows.size() - 1);
    }

    /// The first row below the headings that start at the index.
    std::size_t Last_Headed(std::size_t index) const
    {
        while (d_rows[index].heading_level > 0 && index + 1 < d_rows.size()) {
            ++index;
        }
        return index;
    }

    /// Whether the rows have room from `start` on and none of them would have to start a page.
    bool Fit(std::size_t first, std::size_t last, int start) const
    {
        int next_row = start + Line_Count(d_rows[first]);
        for (std::size_t index = first + 1; index <= last; ++index) {
            next_row += d_rows[index].blank_rows;
            if (next_row >= d_row_slots - d_rows[index].clearance) {
                return false;
            }
            next_row += Line_Count(d_rows[index]);
        }
        return next_row - 1 <= Last_Row();
    }

    int Last_Row() const { return d_row_slots - EMPTY_SLOTS; }

    const std::vector<TPdfRow>& d_rows;
    const TPdfSection& d_section;
    int d_row_slots;
    std::vector<TPdfPage>* d_pages;

    std::vector<const TPdfRow*> d_headings; ///< that the next row stands below
    int d_next_row = 1;
    bool d_is_page_fresh = true; ///< has nothing but headings that stand there again
};

} // namespace

std::vector<TPdfPage> Pdf_Pages(const std::vector<TPdfSection>& sections, int row_slots)
{
    std::vector<TPdfPage> pages;
    for (const TPdfSection& section : sections) {
        TSectionPages(section, row_slots, &pages).Fill();
    }
    return pages;
}
