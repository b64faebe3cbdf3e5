// A source read ahead on a thread of its own: to decompress takes as long as to look at what comes out. The first chunk is
// read without it: more is not in most small files, of which there may be many. For sources that never wait, such as files: the
// thread is waited for at the end.
#pragma once

#include <array>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include "Capture/ByteSource.h"

namespace Capture {

class ReadAhead : public ByteSource {
  public:
    explicit ReadAhead(std::unique_ptr<ByteSource> source) : _source(std::move(source)) {}
    ~ReadAhead() override;
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    /// Throws what the source throws, after what was read before it.
    std::size_t read(char* bytes, std::size_t size) override;

  private:
    static constexpr std::size_t CHUNK = 512 * 1024, CHUNKS = 4;
    struct Chunk {
        std::string bytes;
        std::size_t size = 0; ///< 0: the end, or the failure
        std::deque<SourceFault> faults;
    };

    void start();
    void work();
    void take(std::deque<SourceFault>& from);

    const std::unique_ptr<ByteSource> _source;
    std::size_t _direct = 0; ///< bytes that were read without the thread
    std::array<Chunk, CHUNKS> _chunks;
    std::size_t _used = 0; ///< of the chunk that is read from
    std::exception_ptr _failure;
    std::mutex _mutex; ///< guards what follows
    std::condition_variable _changed;
    uint64_t _filled = 0, _emptied = 0; ///< chunks, in all
    bool _isStopped = false;
    std::thread _thread;
};

} // namespace Capture
