#pragma once

#include <string>
#include <vector>

#include "toolkit/Controls.h"

namespace FendaMaestros {

/// A text placed on a page, in twips from the paper's top left corner. It stands in one line and is cut at its box.
struct PageText {
    Twips left = 0, top = 0, width = 0, height = 0;
    std::string text;
    std::string font;  ///< family: "Arial", "Times New Roman"
    int points = 10;
    bool bold = false;
    Alignment alignment = Alignment::Left;
    /// Nothing is cut: it is wrapped, and set smaller than `points`, until the box holds all of it.
    bool whole = false;
};

struct PageLine {
    Twips left = 0, top = 0, width = 0;
};

struct Page {
    std::vector<PageText> texts;
    std::vector<PageLine> lines;
};

/// Pages made when they are asked for. All pages are of one size.
class PagedDocument {
public:
    virtual ~PagedDocument() = default;

    virtual std::string title() const = 0;
    virtual Twips pageWidth() const = 0;
    virtual Twips pageHeight() const = 0;
    /// At least 1.
    virtual int pageCount() const = 0;
    /// `index` from 0 to pageCount() - 1.
    virtual Page page(int index) const = 0;
};

}  // namespace FendaMaestros
