// Vectors whose storage lies in a message block.
//
//     bufvector<T>    plain values: char, int, plain records; moved and filled as bytes
//     bufvectox<T>    elements that own storage themselves: built with the allocator, copied by assignment
//
// Interface and growth are the usual vector's; the allocator only refers to the block. Storage is given up, never
// returned.
//
// HAZARD: the block is laid out byte-exact, so elements are in general misaligned. A single access to one of them is
// sound on x86-64; a loop over them that the compiler turns into aligned vector instructions is not. Inside, elements
// are therefore only moved as bytes or by copies of fixed size, and loops that must read them go through load(). Code
// outside that loops over plain elements in bulk should do the same.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

#include "Backend/Common/Assert.h"
#include "Backend/Velmora/bufstl/alloc_proxy.h"

namespace bufstl {

/// The value of a plain element that may be misaligned.
template <class T>
QL_FORCE_INLINE T load(const T* p) {
    static_assert(isPlain<T>);
    T value;
    std::memcpy(static_cast<void*>(&value), static_cast<const void*>(p), sizeof(T));
    return value;
}

/// The storage of a vector: the allocator proxy and three element pointers, all null while nothing is allocated.
template <class T, class Alloc>
class _Vector_base {
  public:
    using allocator_type = Alloc;

    explicit _Vector_base(const Alloc& alloc) : _M_alloc(alloc) {
        // Two stores of two words each. The compiler makes four of the obvious initialisers, which doubles the cost of
        // constructing a message.
        static_assert(sizeof(Alloc) == sizeof(T*) && std::is_trivially_copyable_v<Alloc>);
        using Words [[gnu::vector_size(16)]] = uintptr_t;
        const Words first = {reinterpret_cast<uintptr_t>(&alloc.get_init()), 0}, second = {0, 0};
        std::memcpy(static_cast<void*>(this), &first, sizeof first);
        std::memcpy(reinterpret_cast<char*>(this) + sizeof first, &second, sizeof second);
    }
    _Vector_base(const _Vector_base&) = delete;
    _Vector_base& operator=(const _Vector_base&) = delete;
    ~_Vector_base() { _M_give_up_storage(); }

    allocator_type get_allocator() const { return _M_alloc; }

  protected:
    /// Storage for `n` elements, of which the whole block could hold as many or another vector does. The proxy would
    /// make sure once more that their bytes do not wrap around, at 20 instructions a copy of a market data message.
    T* _M_allocate(std::size_t n) {
        return n != 0 ? reinterpret_cast<T*>(_M_alloc.get_init().allocate(n * sizeof(T))) : nullptr;
    }
    void _M_deallocate(T* p, std::size_t n) {
        if (p != nullptr) _M_alloc.deallocate(p, n);
    }
    void _M_give_up_storage() { _M_deallocate(_M_start, static_cast<std::size_t>(_M_end_of_storage - _M_start)); }
    void _M_set_storage(T* start, T* finish, std::size_t capacity) {
        // Stored on its own: left to itself the compiler packs two of the pointers into a vector register first, which
        // takes longer than storing them.
        _M_start = start;
        __asm__("movq %1, %0" : "=m"(_M_finish) : "r"(finish));
        _M_end_of_storage = start + capacity;
    }

    Alloc _M_alloc;
    T* _M_start;
    T* _M_finish;
    T* _M_end_of_storage;
};

template <class T, class Alloc = alloc_proxy<T>>
class vector : public _Vector_base<T, Alloc> {
    using Base = _Vector_base<T, Alloc>;

  protected:
    using Base::_M_alloc;
    using Base::_M_allocate;
    using Base::_M_deallocate;
    using Base::_M_end_of_storage;
    using Base::_M_finish;
    using Base::_M_give_up_storage;
    using Base::_M_set_storage;
    using Base::_M_start;

  public:
    using value_type = T;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using reference = T&;
    using const_reference = const T&;
    using pointer = T*;
    using const_pointer = const T*;
    using iterator = T*;
    using const_iterator = const T*;
    using reverse_iterator = std::reverse_iterator<iterator>;
    using const_reverse_iterator = std::reverse_iterator<const_iterator>;

    explicit vector(const Alloc& alloc) : Base(alloc) {}
    /// `n` copies of `value`. Throws std::length_error beyond max_size(), std::out_of_range when the block is exhausted.
    vector(size_type n, const T& value, const Alloc& alloc) : Base(alloc) { _M_fill_initialize(n, value); }
    /// A copy in the same block: the proxy is shared.
    vector(const vector& other) : Base(other._M_alloc) {
        replaceStorage(other.size(), [&](T*& built) { copyConstruct(other._M_start, other._M_finish, built); });
    }
    ~vector() { destroyRange(_M_start, _M_finish); }

    /// Copies the elements into storage of this vector's own block. Takes exactly the source's count when the capacity
    /// does not suffice. Throws std::out_of_range when the block is exhausted; the old elements then stay.
    vector& operator=(const vector& other);

    void assign(size_type n, const T& value) { _M_fill_assign(n, value); }
    /// The range must not lie in this vector.
    template <std::forward_iterator Iterator>
    void assign(Iterator first, Iterator last) {
        clear();
        reserve(static_cast<size_type>(std::distance(first, last)));
        for (; first != last; ++first) push_back(*first);
    }

    iterator begin() { return _M_start; }
    const_iterator begin() const { return _M_start; }
    iterator end() { return _M_finish; }
    const_iterator end() const { return _M_finish; }
    reverse_iterator rbegin() { return reverse_iterator(end()); }
    const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
    reverse_iterator rend() { return reverse_iterator(begin()); }
    const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }

    size_type size() const { return static_cast<size_type>(_M_finish - _M_start); }
    size_type max_size() const { return _M_alloc.max_size(); } ///< elements that the whole block could hold
    size_type capacity() const { return static_cast<size_type>(_M_end_of_storage - _M_start); }
    bool empty() const { return _M_start == _M_finish; }

    /// Appends copies of `value` or drops elements from the end, so that `n` remain.
    void resize(size_type n, const T& value = T()) {
        if (n > size())
            _M_fill_insert(end(), n - size(), value);
        else
            _M_erase_at_end(_M_start + n);
    }
    /// Makes room for exactly `n` elements unless there is. Throws std::length_error beyond max_size().
    void reserve(size_type n);

    reference operator[](size_type n) { return _M_start[n]; }
    const_reference operator[](size_type n) const { return _M_start[n]; }
    /// As operator[]; throws std::out_of_range where there is no such element.
    reference at(size_type n) {
        _M_range_check(n);
        return _M_start[n];
    }
    const_reference at(size_type n) const {
        _M_range_check(n);
        return _M_start[n];
    }
    reference front() { return *_M_start; }
    const_reference front() const { return *_M_start; }
    reference back() { return _M_finish[-1]; }
    const_reference back() const { return _M_finish[-1]; }
    pointer data() { return _M_start; }
    const_pointer data() const { return _M_start; }

    void push_back(const T& value) { _M_insert_aux(end(), value); }
    /// Appends `n` fresh elements one after the other and hands each to `fill` once it is built: growth by resize() and
    /// a loop over what is new, in one pass. When `fill` throws, the elements built so far stay.
    template <class Fill>
    QL_FORCE_INLINE void append_each(size_type n, Fill&& fill) {
        if (_M_start == nullptr && n != 0) // the first storage is what is needed, to the byte
            if (T * start; _M_alloc.tryAllocate(n, start)) _M_set_storage(start, start, n);
        if (static_cast<size_type>(_M_end_of_storage - _M_finish) < n) _M_grow(n);
        _M_append_each(n, fill);
    }
    /// append_each() to a vector that has no storage, in storage that the caller took of its block.
    template <class Fill>
    QL_FORCE_INLINE void append_each_at(char* storage, size_type n, Fill&& fill) {
        T* const start = reinterpret_cast<T*>(storage);
        _M_set_storage(start, start, n);
        _M_append_each(n, fill);
    }
    void pop_back() { _M_erase_at_end(_M_finish - 1); }

    iterator insert(iterator position, const T& value) {
        const difference_type offset = position - _M_start;
        _M_insert_aux(position, value);
        return _M_start + offset;
    }
    void insert(iterator position, size_type n, const T& value) { _M_fill_insert(position, n, value); }

    iterator erase(iterator position) { return erase(position, position + 1); }
    iterator erase(iterator first, iterator last) {
        if (first != last) _M_erase_at_end(assignForward(last, _M_finish, first));
        return first;
    }
    void clear() { _M_erase_at_end(_M_start); }

    /// Exchanges the storage. Both vectors must live in the same block, for storage cannot change its block.
    void swap(vector& other) {
        QL_ASSERT(&_M_alloc.get_init() == &other._M_alloc.get_init());
        std::swap(_M_start, other._M_start);
        std::swap(_M_finish, other._M_finish);
        std::swap(_M_end_of_storage, other._M_end_of_storage);
    }

    /// Equal counts and equal elements; numbers and characters are compared as bytes.
    friend bool operator==(const vector& a, const vector& b) {
        if (a.size() != b.size()) return false;
        if constexpr (std::is_arithmetic_v<T>) // no padding, no two patterns of one value
            return a.empty() || std::memcmp(a._M_start, b._M_start, a.size() * sizeof(T)) == 0;
        for (size_type i = 0; i < a.size(); ++i)
            if (!equalElement(a._M_start + i, b._M_start + i)) return false;
        return true;
    }
    /// Lexicographic, a proper prefix first: negative, 0 or positive as this vector is less than, equal to or greater
    /// than the other. Characters are compared as signed, whatever `char` is on this machine.
    int compare(const vector& other) const {
        const size_type common = std::min(size(), other.size());
        if constexpr (std::is_same_v<T, char>) // mostly equal, as far as both go
            if (common == 0 || std::memcmp(_M_start, other._M_start, common) == 0) return compareSizes(other);
        for (size_type i = 0; i < common; ++i) {
            if (lessElement(_M_start + i, other._M_start + i)) return -1;
            if (lessElement(other._M_start + i, _M_start + i)) return 1;
        }
        return compareSizes(other);
    }
    friend bool operator<(const vector& a, const vector& b) { return a.compare(b) < 0; }

  protected:
    void _M_fill_initialize(size_type n, const T& value) {
        if (n > max_size()) throwLength("vector::_M_fill_initialize");
        replaceStorage(n, [&](T*& built) { fillConstruct(built, n, value); });
    }
    void _M_fill_assign(size_type n, const T& value);
    /// Inserts `n` copies. Throws std::length_error where the whole block could not hold them, std::out_of_range where
    /// what is left of it does not; the elements are then as before.
    void _M_fill_insert(iterator position, size_type n, const T& value) {
        insertCopies(position, n, value, "vector::_M_fill_insert");
    }
    void _M_insert_aux(iterator position, const T& value) { insertCopies(position, 1, value, "vector::_M_insert_aux"); }
    /// The capacity to grow to for `n` more elements: doubled at least, bounded by the block.
    size_type _M_check_len(size_type n, const char* operation) const {
        if (max_size() - size() < n) throwLength(operation);
        const size_type length = size() + std::max(size(), n);
        return length < size() || length > max_size() ? max_size() : length;
    }
    template <class Fill>
    QL_FORCE_INLINE void _M_append_each(size_type n, Fill& fill) {
        for (; n != 0; --n) {
            T* const fresh = _M_finish;
            _M_alloc.construct(fresh, _M_alloc.get_init());
            ++_M_finish;
            fill(*fresh);
        }
    }
    void _M_grow(size_type n) { reserve(_M_check_len(n, "vector::_M_fill_insert")); }
    void _M_erase_at_end(T* position) {
        destroyRange(position, _M_finish);
        _M_finish = position;
    }
    void _M_range_check(size_type n) const {
        if (n >= size()) throwRange();
    }

  private:
    QL_COLD_PATH [[noreturn]] static void throwLength(const char* operation) { throw std::length_error(operation); }
    QL_COLD_PATH [[noreturn]] static void throwRange() { throw std::out_of_range("vector::_M_range_check"); }

    void insertCopies(iterator position, size_type n, const T& value, const char* operation) {
        if (static_cast<size_type>(_M_end_of_storage - _M_finish) < n)
            replaceStorage(_M_check_len(n, operation), [&](T*& built) {
                copyConstruct(_M_start, position, built);
                fillConstruct(built, n, value);
                copyConstruct(position, _M_finish, built);
            });
        else if (position == _M_finish)
            fillConstruct(_M_finish, n, value);
        else if (n != 0)
            insertInPlace(position, n, value);
    }
    [[gnu::cold]] void insertInPlace(iterator position, size_type n, const T& value); // rare: in front of elements

    /// Moves the vector to new storage of that capacity, whose elements `build(built)` makes, advancing `built` past
    /// each. When that throws, what was built is destroyed and the old storage stays in use.
    template <class Build>
    void replaceStorage(size_type capacity, Build&& build) {
        T* const start = _M_allocate(capacity);
        T* built = start;
        try {
            build(built);
        } catch (...) {
            destroyRange(start, built);
            _M_deallocate(start, capacity);
            throw;
        }
        destroyRange(_M_start, _M_finish);
        _M_give_up_storage();
        _M_set_storage(start, built, capacity);
    }

    // Steps over ranges. Plain elements move as bytes.

    /// Builds copies of [first, last) from `built` on, advancing it past each.
    void copyConstruct(const T* first, const T* last, T*& built) {
        if constexpr (isPlain<T>)
            built = moveBytes(first, last, built);
        else
            for (; first != last; ++first, ++built) _M_alloc.construct(built, *first);
    }
    /// Builds `n` copies of `value` from `built` on, advancing it past each.
    void fillConstruct(T*& built, size_type n, const T& value) {
        if constexpr (std::is_same_v<T, char>) {
            if (n != 0) std::memset(built, value, n);
            built += n;
        } else {
            for (; n != 0; --n, ++built) _M_alloc.construct(built, value);
        }
    }
    /// Assigns [first, last) to the elements from `to` on, which lie before `first` or in other storage; returns their
    /// end.
    static T* assignForward(const T* first, const T* last, T* to) {
        if constexpr (isPlain<T>)
            return moveBytes(first, last, to);
        else
            while (first != last) *to++ = *first++;
        return to;
    }
    static void assignFill(T* first, T* last, const T& value) {
        for (; first != last; ++first) {
            if constexpr (isPlain<T>)
                std::memmove(static_cast<void*>(first), static_cast<const void*>(&value), sizeof(T));
            else
                *first = value;
        }
    }
    static T* moveBytes(const T* first, const T* last, T* to) {
        const size_type n = static_cast<size_type>(last - first);
        if (n != 0) std::memmove(static_cast<void*>(to), static_cast<const void*>(first), n * sizeof(T));
        return to + n;
    }
    void destroyRange([[maybe_unused]] T* first, [[maybe_unused]] T* last) {
        if constexpr (!isPlain<T>)
            for (; first != last; ++first) _M_alloc.destroy(first);
    }

    int compareSizes(const vector& other) const { return (size() > other.size()) - (size() < other.size()); }
    static bool equalElement(const T* a, const T* b) {
        if constexpr (isPlain<T>)
            return load(a) == load(b);
        else
            return *a == *b;
    }
    static bool lessElement(const T* a, const T* b) {
        if constexpr (std::is_same_v<T, char>)
            return static_cast<signed char>(*a) < static_cast<signed char>(*b);
        else if constexpr (isPlain<T>)
            return load(a) < load(b);
        else
            return *a < *b;
    }
};

template <class T, class Alloc>
vector<T, Alloc>& vector<T, Alloc>::operator=(const vector& other) {
    if (this == &other) return *this;
    if (other.size() > capacity()) {
        replaceStorage(other.size(), [&](T*& built) { copyConstruct(other._M_start, other._M_finish, built); });
    } else if (other.size() <= size()) {
        _M_erase_at_end(assignForward(other._M_start, other._M_finish, _M_start));
    } else {
        const T* const rest = other._M_start + size();
        assignForward(other._M_start, rest, _M_start);
        copyConstruct(rest, other._M_finish, _M_finish);
    }
    return *this;
}

template <class T, class Alloc>
void vector<T, Alloc>::reserve(size_type n) {
    if (n > max_size()) throwLength("vector::reserve");
    if (n > capacity()) replaceStorage(n, [&](T*& built) { copyConstruct(_M_start, _M_finish, built); });
}

template <class T, class Alloc>
void vector<T, Alloc>::_M_fill_assign(size_type n, const T& value) {
    if (n > max_size()) throwLength("vector::_M_fill_assign");
    if (n > capacity()) {
        replaceStorage(n, [&](T*& built) { fillConstruct(built, n, value); });
        return;
    }
    assignFill(_M_start, _M_start + std::min(n, size()), value);
    if (n > size())
        fillConstruct(_M_finish, n - size(), value);
    else
        _M_erase_at_end(_M_start + n);
}

template <class T, class Alloc>
void vector<T, Alloc>::insertInPlace(iterator position, size_type n, const T& value) {
    T* const last = _M_finish;
    const size_type after = static_cast<size_type>(last - position);
    if constexpr (isPlain<T>) {
        const T copy = load(&value); // `value` may be one of the elements about to move
        _M_finish = moveBytes(position, last, position + n);
        fillConstruct(position, n, copy);
    } else {
        T copy(_M_alloc.get_init());
        copy = value;
        if (after > n) {
            copyConstruct(last - n, last, _M_finish);
            for (T *from = last - n, *to = last; from != position;) *--to = *--from;
            assignFill(position, position + n, copy);
        } else {
            fillConstruct(_M_finish, n - after, copy);
            copyConstruct(position, last, _M_finish);
            assignFill(position, last, copy);
        }
    }
}

// The two assertions of the container check, in the function that the report is to name. The start pointer is
// deliberately not examined, and both bounds are inclusive.
#define QL_ASSERT_INSIDE(begin, end, finish, end_of_storage)                                                           \
    const void* const begin_ = (finish);                                                                               \
    const void* const end_ = (end_of_storage);                                                                         \
    QL_ASSERT(begin_ == 0 || (begin <= begin_ && begin_ <= end));                                                      \
    QL_ASSERT(end_ == 0 || (begin <= end_ && end_ <= end))

/// A vector of plain values. New elements are zero or copies; they are never given the allocator.
template <class T>
class bufvector : public vector<T, alloc_proxy<T>> {
    using Base = vector<T, alloc_proxy<T>>;

  public:
    using buffer_alloc = Velmora::BufferAllocator;

    explicit bufvector(buffer_alloc& alloc) : Base(alloc_proxy<T>(alloc)) {}

    /// Appends one zero element.
    T& add_back() {
        this->resize(this->size() + 1);
        return this->back();
    }

    /// Asserts that the storage ends inside [begin, end]. Elements are not visited.
    void checkbounds(const void* begin, const void* end) const {
        QL_ASSERT_INSIDE(begin, end, this->_M_finish, this->_M_end_of_storage);
    }
};

/// A vector of elements that own storage. Every element is first built with the vector's allocator, then assigned.
template <class T>
class bufvectox : public vector<T, alloc_proxy<T>> {
    using Base = vector<T, alloc_proxy<T>>;

  public:
    using buffer_alloc = Velmora::BufferAllocator;
    using typename Base::const_reference;
    using typename Base::size_type;

    explicit bufvectox(buffer_alloc& alloc) : Base(alloc_proxy<T>(alloc)) {}
    bufvectox(const bufvectox&) = default;
    bufvectox& operator=(const bufvectox& other) {
        Base::operator=(other);
        return *this;
    }

    void push_back(const_reference value) { Base::push_back(value); }

    /// Appends fresh elements or drops elements from the end, so that `n` remain.
    void resize(size_type n) {
        if (n > this->size())
            this->_M_fill_insert(this->end(), n - this->size(), T(this->_M_alloc.get_init()));
        else
            this->_M_erase_at_end(this->_M_start + n);
    }

    /// Appends one fresh element.
    T& add_back() {
        resize(this->size() + 1);
        return this->back();
    }

    /// Asserts that the storage ends inside [begin, end], then the same of what every element owns.
    void checkbounds(const void* begin, const void* end) const {
        QL_ASSERT_INSIDE(begin, end, this->_M_finish, this->_M_end_of_storage);
        for (const T& element : *this) element.checkbounds(begin, end);
    }
};

#undef QL_ASSERT_INSIDE

} // namespace bufstl
