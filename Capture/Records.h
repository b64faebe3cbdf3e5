// Containers whose records are a header and a packet: pcap and ERF.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Capture/Container.h"
#include "Capture/RecordFinder.h"

namespace Capture {

/// For the forms PcapForm and ErfForm.
template <class Form>
class Records : public Container {
  public:
    /// Works at the position of the window. REQUIRES: the window outlives this.
    Records(ByteWindow& window, const Form& form, const Inspect::Protocol& protocol)
        : _window(window), _form(form), _finder(window, form, protocol) {}

    bool next(Packet& packet) override;
    bool isReady() const override;
    void jumped() override;

  private:
    bool nextRecord();
    std::string describe(std::string_view header) const;

    ByteWindow& _window;
    const Form _form;
    RecordFinder<Form> _finder;
    std::optional<typename RecordFinder<Form>::Found> _found; ///< what came out last, still at the window's position
};

} // namespace Capture
