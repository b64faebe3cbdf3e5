#include "Host/RingPlace.h"

#include <fcntl.h>

#include "Host/RingTurn.h"

namespace Host {

namespace {

detail::RingHeader::Place& placeOf(detail::RingHeader& header, const std::string& name) {
    const detail::RingTurn turn(header);
    for (detail::RingHeader::Place& place : header.places) {
        if (place.name[0] == '\0') name.copy(place.name, LONGEST_READER_NAME);
        if (place.name == name) return place;
    }
    throw RingError("no room for '" + name + "': readers of " + std::to_string(std::size(header.places))
                    + " names have a place there");
}

} // namespace

RingPlace::RingPlace(const MemRing& ring, const std::string& name)
    : _next(placeOf(ring.header(), name).next), _lock(ring._file.again()) {
    // A byte of the file for each place, locked for as long as it is open.
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = reinterpret_cast<char*>(&_next) - reinterpret_cast<char*>(&ring.header());
    lock.l_len = 1;
    if (::fcntl(_lock.number(), F_OFD_SETLK, &lock) != 0) throw RingError("another one reads as '" + name + "'");
}

uint64_t RingPlace::next() const { return detail::load(_next); }
void RingPlace::goOnWith(uint64_t sequence) { detail::store(_next, sequence); }

} // namespace Host
