#include "session/FoundRows.h"

#include <algorithm>
#include <numeric>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
        if (text.empty()) return words;
        words.push_back(text.substr(0, text.find(' ')));
        text.remove_prefix(words.back().size());
    }
}

}  // namespace

std::string_view FoldedColumn::text(int row) {
    if (ends_.empty()) fold();
    const auto at = static_cast<std::size_t>(row);
    const std::size_t begin = at == 0 ? 0 : ends_[at - 1];
    return std::string_view(texts_).substr(begin, ends_[at] - begin);
}

void FoldedColumn::fold() {
    std::size_t bytes = 0;
    for (int row = 0; row < rows_->rowCount(); ++row) bytes += rows_->textView(row, column_).size();
    texts_.reserve(bytes);
    ends_.reserve(static_cast<std::size_t>(rows_->rowCount()));
    for (int row = 0; row < rows_->rowCount(); ++row) {
        const std::string_view text = rows_->textView(row, column_);
        if (text.empty())
            texts_ += rows_->cell(row, column_).text();
        else
            text::appendFolded(texts_, text);
        ends_.push_back(texts_.size());
    }
}

FoundRows::FoundRows(std::shared_ptr<const Recordset> rows, int searchColumn)
    : FoundRows(std::make_shared<FoldedColumn>(std::move(rows), searchColumn), {}) {
    found_.resize(static_cast<std::size_t>(all().rowCount()));
    std::iota(found_.begin(), found_.end(), 0);
    moveToRow(0);
}

std::shared_ptr<FoundRows> FoundRows::search(std::string_view typed) const {
    std::shared_ptr<FoundRows> result(new FoundRows(column_, text::folded(typed)));
    const std::vector<std::string_view> words = wordsOf(result->sought_);
    const std::string beginning = text::trim(result->sought_);
    std::vector<int> elsewhere;
    const auto keep = [&](int row) {
        const std::string_view text = words.empty() ? std::string_view() : column_->text(row);
        const bool matches = std::ranges::all_of(
            words, [text](std::string_view word) { return text.find(word) != std::string_view::npos; });
        if (matches) (text.starts_with(beginning) ? result->found_ : elsewhere).push_back(row);
    };

    const bool goesOn = result->sought_.find(sought_) != std::string::npos;
    if (goesOn)
        std::ranges::for_each(found_, keep);
    else
        for (int row = 0; row < all().rowCount(); ++row) keep(row);
    std::ranges::sort(result->found_);
    std::ranges::sort(elsewhere);
    result->found_.insert(result->found_.end(), elsewhere.begin(), elsewhere.end());
    result->moveToRow(0);
    return result;
}

}  // namespace FendaMaestros
