// The bus of one machine: a ring in shared memory (MemRing.h), without a server.
//
//     mem:NAME                  a file in /dev/shm
//     mem:/path/of/a/file       another one; mem:./file is one of this folder
//     mem:NAME?size=256         MB for messages, if the bus is made by this; else 64
//
// Publishing takes a message into memory and waits for nobody: it outlives processes, not the machine. Who wants messages kept
// lets a process record them (Recorder.h). That process tells the ring where, so that late joiners get from its journal what
// the ring no longer holds; and if it cannot write, nothing is published until it can again, or dies.
//
// Where readers with names stopped is kept in the ring, for up to 64 names, and goes with it: after the machine has started
// anew they begin as they would the first time.
#pragma once

#include "Host/Bus.h"
#include "Host/MemRing.h"

namespace Host {

class MemBus : public Bus {
  public:
    /// Opens the bus or makes it. Throws BusError.
    MemBus(const std::string& url, Topics topics);

    using Bus::publish;
    uint64_t publish(const Record& record) override;
    Inspect::Encoded publish(Velmora::MsgType_t id, const void* message, int64_t time, uint64_t& sequence) override;
    std::unique_ptr<Source> read(From from) override;
    void journalIs(const KeptJournal& journal, uint64_t last) override;

  private:
    std::unique_ptr<Source> readNamed(const std::string& name, From from) override;

    MemRing _ring;
};

} // namespace Host
