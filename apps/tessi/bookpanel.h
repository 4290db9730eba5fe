#pragma once

#include "apps/tessi/followedbook.h"
#include "apps/tessi/panel.h"

#include <cstddef>
#include <optional>
#include <string>

namespace tessi {

// The ladder of the whole book, built from ticks.
class BookPanel : public Panel {
public:
    BookPanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override { m_book.subscribe(data); }
    Table rows() override;
    std::string whyEmpty() const override { return "no order rests and nothing was traded"; }

private:
    FollowedBook m_book;
    std::optional<std::size_t> m_depth;
};

} // namespace tessi
