#pragma once

#include "apps/tessi/followedbook.h"
#include "apps/tessi/panel.h"

namespace tessi {

// The ladder of the whole book: asks above bids from the highest price down, volumes in hands, and between them the
// last price with the volume that was traded last.
class BookPanel : public Panel {
public:
    BookPanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override { m_book.subscribe(data); }
    Table rows() override;
    std::string whyEmpty() const override { return "no order rests and nothing was traded"; }

private:
    FollowedBook m_book;
    std::size_t m_depth;
};

} // namespace tessi
