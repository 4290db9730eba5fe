#pragma once

#include <memory>
#include <string>
#include <vector>

namespace recording {
class DataLayer;
struct RecordedDay;
} // namespace recording

namespace tessi {

class Table;

// A view of the terminal over a day that is replayed: it follows the day's instrument with a model, subscribes what
// the model needs, and shows the model's rows once the day has been delivered and all strands are idle.
class Panel {
public:
    virtual ~Panel() = default;
    virtual void subscribe(recording::DataLayer& data) = 0;
    virtual Table rows() const = 0;
};

std::vector<std::string> panelNames();

// The panel of that name for the day, whose instrument the terminal knows by now. Null for an unknown name.
std::unique_ptr<Panel> makePanel(const std::string& name, const recording::RecordedDay& day);

} // namespace tessi
