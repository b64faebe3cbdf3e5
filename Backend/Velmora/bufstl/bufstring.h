// A text string in a message block: a vector of characters that ends with one NUL once anything has been stored.
//
//     never stored     no elements, no storage          size 0, c_str() ""
//     stored empty     one element, the NUL             size 0, c_str() ""
//     "abc"            four elements                    size 3
//
// The first two read and travel alike but compare unequal: emptiness is not normalised. Any byte may be stored, NUL
// included. Growth is the vector's: what does not fit the capacity takes at least twice the old element count from the
// block.
#pragma once

#include <cstring>
#include <string>

#include "Backend/Common/CopyBytes.h"
#include "Backend/Velmora/bufstl/bufvector.h"

namespace bufstl {

template <class CharT>
class basic_bufstring : public bufvector<CharT> {
    static_assert(std::is_same_v<CharT, char>, "texts of this system are bytes");
    using Base = bufvector<CharT>;

  public:
    using typename Base::buffer_alloc;
    using typename Base::size_type;

    /// A string that was never stored.
    explicit basic_bufstring(buffer_alloc& alloc) : Base(alloc) {}
    basic_bufstring(const basic_bufstring&) = default;

    /// Takes over all elements of `other`, its NUL included; none from a string that was never stored, not even a NUL.
    basic_bufstring& operator=(const basic_bufstring& other) {
        const size_type count = other.size_();
        if (char* start; count - 1 < Quillon::SHORT_COPY && _M_take_first(count, start)) // nearly all
            Quillon::copyBytes(start, other._M_start, count);
        else if (count != 0 || !empty_())
            _M_assign_rare(other, count);
        return *this;
    }
    basic_bufstring& operator=(const char* text) { return assign(text); }
    basic_bufstring& operator=(const std::string& text) { return assign(text.data(), text.size()); }

    /// Stores `text` up to its NUL; a null pointer stores the empty text.
    basic_bufstring& assign(const char* text) { return assign(text, text != nullptr ? std::strlen(text) : 0); }
    /// Stores `n` characters, which may be some of this string's own.
    basic_bufstring& assign(const char* text, size_type n) {
        char* const start = _M_overwrite(n + 1);
        Quillon::copyBytes(start, text, n);
        start[n] = '\0';
        return *this;
    }
    /// assign() of a short text to a string that was never stored. False, with nothing done, where the string is not
    /// such a one or its block has too little left: assign() is for these.
    QL_FORCE_INLINE bool assignFirst(const char* text, size_type n) {
        char* start;
        if (!_M_take_first(n + 1, start)) return false;
        Quillon::copyBytes(start, text, n);
        start[n] = '\0';
        return true;
    }
    /// assign() to a string that was never stored, in n + 1 bytes of storage that the caller took of its block.
    QL_FORCE_INLINE void assign_at(char* storage, const char* text, size_type n) {
        this->_M_set_storage(storage, storage + n + 1, n + 1);
        Quillon::copyBytes(storage, text, n);
        storage[n] = '\0';
    }
    basic_bufstring& append(const char* text) {
        const size_type old = size();
        const size_type n = text != nullptr ? std::strlen(text) : 0;
        Base::resize(old + n + 1);
        if (n != 0) std::memmove(this->_M_start + old, text, n);
        this->_M_start[old + n] = '\0';
        return *this;
    }
    basic_bufstring& operator+=(const char* text) { return append(text); }

    /// Makes the text empty. Keeps the storage and its NUL; a string that was never stored stays so.
    void clear() {
        if (empty_()) return;
        Base::resize(1);
        this->_M_start[0] = '\0';
    }

    const char* c_str() const { return empty_() ? "" : this->_M_start; }
    /// Length of the text, without the NUL.
    size_type size() const {
        const size_type stored = Base::size();
        return stored - (stored != 0);
    }
    bool empty() const { return size() == 0; }

    // The same of the stored elements, without relying on the NUL.
    size_type size_() const { return Base::size(); } ///< stored characters, the NUL included
    bool empty_() const { return Base::empty(); }    ///< whether nothing is stored, not even a NUL

    /// Whether the string is well formed: nothing stored, or a NUL at its end.
    bool check() const { return empty_() || this->_M_finish[-1] == '\0'; }

    friend bool operator==(const basic_bufstring& a, const std::string& b) {
        return a.size() == b.size() && std::memcmp(a.c_str(), b.data(), b.size()) == 0;
    }
    friend bool operator!=(const basic_bufstring& a, const std::string& b) { return !(a == b); }

  private:
    /// The storage of a string's first text: `count` elements, no more. False, with nothing done, where it has storage
    /// or its block has too little left.
    QL_FORCE_INLINE bool _M_take_first(size_type count, char*& start) {
        if (__builtin_expect(this->_M_start != nullptr || !this->_M_alloc.tryAllocate(count, start), 0)) return false;
        this->_M_set_storage(start, start + count, count);
        return true;
    }
    [[gnu::noinline]] void _M_assign_rare(const basic_bufstring& other, size_type count) {
        if (this != &other) Quillon::copyBytes(_M_overwrite(count), other._M_start, count);
    }
    /// Makes `count` elements that the caller is about to overwrite, with the growth of resize() but without its fill.
    /// Returns the first. Old storage that was replaced stays readable, for the block takes nothing back.
    QL_FORCE_INLINE char* _M_overwrite(size_type count) {
        if (char* start; _M_take_first(count, start)) return start;
        if (count > this->capacity()) _M_renew(count);
        this->_M_finish = this->_M_start + count;
        return this->_M_start;
    }
    /// Makes room for `count` elements, of which none is kept.
    [[gnu::noinline]] void _M_renew(size_type count) {
        const size_type length = this->_M_check_len(count - size_(), "vector::_M_fill_insert");
        char* const start = this->_M_allocate(length);
        this->_M_give_up_storage();
        this->_M_set_storage(start, start, length);
    }
};

using bufstring = basic_bufstring<char>;

} // namespace bufstl
