#include "tools/qlproto/live/LiveInterface.h"

#ifdef QL_WITH_PCAP

#include <fmt/format.h>
#include <pcap/pcap.h>
#include <poll.h>

#include "Capture/Errors.h"
#include "tools/qlproto/messages/Filter.h"

namespace qlproto {

namespace {

std::string interfaceNames() {
    char error[PCAP_ERRBUF_SIZE];
    pcap_if_t* all = nullptr;
    if (pcap_findalldevs(&all, error) != 0) return "";
    std::string names;
    for (const pcap_if_t* it = all; it != nullptr; it = it->next) names.append(names.empty() ? "" : ", ") += it->name;
    pcap_freealldevs(all);
    return names;
}

class PcapInterface : public LiveInterface {
  public:
    explicit PcapInterface(const InterfaceOptions& options) : _name(options.name) {
        char error[PCAP_ERRBUF_SIZE] = "";
        _handle.reset(pcap_create(_name.c_str(), error));
        if (!_handle) fail(error);
        // Packets are handed over in blocks of any size, each after 10 ms at the latest: in the mode that hands over each packet
        // by itself, one of 60 bytes takes as much of the buffer as the longest.
        constexpr int milliseconds = 10, megabyte = 1 << 20;
        pcap_set_snaplen(_handle.get(), Capture::MAX_PACKET);
        pcap_set_promisc(_handle.get(), options.isPromiscuous);
        pcap_set_timeout(_handle.get(), milliseconds);
        pcap_set_buffer_size(_handle.get(), options.buffer * megabyte);
        pcap_set_tstamp_precision(_handle.get(), PCAP_TSTAMP_PRECISION_NANO);
        activate();
        if (pcap_setnonblock(_handle.get(), 1, error) != 0) fail(error);
        if (!options.filter.empty()) setFilter(options.filter);
    }

    uint32_t linkType() const override {
        const int type = pcap_datalink(_handle.get());
        // The only one of those known here by another number than in captures.
        return type == DLT_RAW ? Capture::LinkType::RAW_IP : static_cast<uint32_t>(type);
    }

    bool next(Capture::Packet& packet) override {
        pcap_pkthdr* header = nullptr;
        const unsigned char* bytes = nullptr;
        const int result = pcap_next_ex(_handle.get(), &header, &bytes);
        if (result < 0) fail(pcap_geterr(_handle.get()));
        if (result == 0) return false;
        const int64_t nanoseconds =
            header->ts.tv_usec * (pcap_get_tstamp_precision(_handle.get()) == PCAP_TSTAMP_PRECISION_NANO ? 1 : 1000);
        packet = {.time = header->ts.tv_sec * int64_t(1'000'000'000) + nanoseconds,
                  .bytes = {reinterpret_cast<const char*>(bytes), header->caplen},
                  .original = header->len,
                  .linkType = linkType()};
        return true;
    }

    void wait(int milliseconds) override {
        pollfd it{.fd = pcap_get_selectable_fd(_handle.get()), .events = POLLIN, .revents = 0};
        poll(&it, 1, milliseconds);
    }

    uint64_t dropped() override {
        pcap_stat counts{};
        return pcap_stats(_handle.get(), &counts) == 0 ? uint64_t(counts.ps_drop) + counts.ps_ifdrop : 0;
    }

  private:
    void activate() {
        const int result = pcap_activate(_handle.get());
        if (result >= 0) return; // more than that is a warning
        if (result == PCAP_ERROR_NO_SUCH_DEVICE)
            throw Capture::IoError(fmt::format("no interface is named '{}'; there are {}", _name, interfaceNames()));
        if (result == PCAP_ERROR_PERM_DENIED || result == PCAP_ERROR_PROMISC_PERM_DENIED)
            fail("may not be captured from: that takes root, or a program with the capability cap_net_raw");
        const std::string why = pcap_geterr(_handle.get());
        fail(why.empty() ? pcap_statustostr(result) : why);
    }

    void setFilter(const std::string& text) {
        bpf_program program{};
        if (pcap_compile(_handle.get(), &program, text.c_str(), 1, PCAP_NETMASK_UNKNOWN) != 0)
            throw FilterError(fmt::format("--filter: {}", pcap_geterr(_handle.get())));
        const int result = pcap_setfilter(_handle.get(), &program);
        pcap_freecode(&program);
        if (result != 0) fail(pcap_geterr(_handle.get()));
    }

    [[noreturn]] void fail(const std::string& why) const { throw Capture::IoError(fmt::format("{}: {}", _name, why)); }

    struct Close {
        void operator()(pcap_t* it) const { pcap_close(it); }
    };
    const std::string _name;
    std::unique_ptr<pcap_t, Close> _handle;
};

} // namespace

std::unique_ptr<LiveInterface> LiveInterface::open(const InterfaceOptions& options) {
    return std::make_unique<PcapInterface>(options);
}

} // namespace qlproto

#else

namespace qlproto {
std::unique_ptr<LiveInterface> LiveInterface::open(const InterfaceOptions&) { return nullptr; }
} // namespace qlproto

#endif
