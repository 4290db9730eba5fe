#include "apps/tessi/thousandpanel.h"

#include "apps/tessi/bookreading.h"
#include "apps/tessi/ladder.h"
#include "apps/tessi/missingstreams.h"
#include "apps/tessi/table.h"

namespace tessi {

using recording::Stream;

// Without a thousand-level record the model has nothing to show, not even the ten levels.
ThousandPanel::ThousandPanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_book(day)
    , m_depth(options.depth)
    , m_byQuoter(options.byQuoter)
    , m_whyEmpty(options.byQuoter ? "there is no level-2 snapshot with a level, or no thousand-level one yet"
                                  : "no thousand-level snapshot shows a level")
    , m_note(missingStreamsText(day, {Stream::Thousand, Stream::Snapshots}))
{}

Table ThousandPanel::rows()
{
    return ladderOf(BookReading(m_book.model, m_byQuoter), m_book.model.m_priceTick, m_depth);
}

std::string ThousandPanel::foot() const
{
    return "change: hands of a second ago less those of now, so that growth is negative";
}

} // namespace tessi
