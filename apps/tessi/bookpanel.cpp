#include "apps/tessi/bookpanel.h"

#include "apps/tessi/bookreading.h"
#include "apps/tessi/ladder.h"
#include "apps/tessi/table.h"

namespace tessi {

BookPanel::BookPanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_book(day)
    , m_depth(options.depth)
{}

Table BookPanel::rows()
{
    return ladderOf(BookReading(m_book.model), m_book.model.m_priceTick, m_depth);
}

} // namespace tessi
