#pragma once

#include <algorithm>
#include <memory>
#include <tuple>
#include <utility>

/// Growing array that keeps each element in a heap block of its own, so that an element never moves.
///
/// Table entries at and above `count` are null. Growth doubles the table; a capacity below 1 counts as 1.
template <class T>
class TZoArray {
  public:
    static constexpr int kDefaultCapacity = 256;

    TZoArray() : TZoArray(kDefaultCapacity) {}
    explicit TZoArray(int tableSize) { Init(tableSize, true); }
    TZoArray(const TZoArray& other) : TZoArray(other.capacity) { CopyElements(other); }
    virtual ~TZoArray() { FreeAll(); }

    /// Takes the elements and the capacity of the other array.
    TZoArray& operator=(const TZoArray& other) {
        if (this == &other) return *this;
        FreeElements();
        if (capacity != other.capacity) {
            delete[] items;
            Init(other.capacity, true);
        }
        CopyElements(other);
        return *this;
    }

    bool operator==(const TZoArray& other) const {
        return count == other.count &&
               std::equal(items, items + count, other.items, [](const T* a, const T* b) { return *a == *b; });
    }
    bool operator!=(const TZoArray& other) const { return !(*this == other); }

    void Add(const T& value) { Insert(value, count); }

    /// Puts a copy in front of the element at `index`; an index outside [0, count] is brought to the nearer end.
    void Insert(const T& value, int index) {
        index = std::clamp(index, 0, count);
        auto element = std::make_unique<T>(value);
        if (count >= capacity) Reallocate(std::max(1, count * 2));
        std::copy_backward(items + index, items + count, items + count + 1);
        items[index] = element.release();
        ++count;
    }

    /// An index outside the array does nothing.
    void Remove(int index) {
        if (index < 0 || index >= count) return;
        delete items[index];
        std::copy(items + index + 1, items + count, items + index);
        items[--count] = nullptr;
    }

    /// Empties the array; the table is of the default capacity afterwards.
    void Clear() {
        FreeAll();
        Init(kDefaultCapacity, true);
    }

    /// Unchecked.
    T& operator[](int index) { return *items[index]; }
    const T& operator[](int index) const { return *items[index]; }

    int Size() const { return count; }
    bool IsEmpty() const { return count == 0; }

    /// Linear search over [from, to); `to` of -1 means the end. The index, or -1.
    int Search(const T& value, int from = 0, int to = -1) const {
        if (to < 0 || to > count) to = count;
        for (int i = std::max(from, 0); i < to; ++i) {
            if (*items[i] == value) return i;
        }
        return -1;
    }

    /// Binary search of an ascending or of a descending array; the index of a match, or -1.
    int BinSearchUp(const T& value) const {
        return BinSearch(value, [](const T& a, const T& b) { return a < b; });
    }
    int BinSearchDown(const T& value) const {
        return BinSearch(value, [](const T& a, const T& b) { return b < a; });
    }

    /// Ascending, not stable.
    void Sort() { QuickSort(0, count - 1); }

    T** items = nullptr;
    int count = 0;
    int capacity = 0;

  protected:
    void Reallocate(int tableSize) {
        tableSize = std::max(tableSize, 1);
        T** table = new T* [tableSize] {};
        const int kept = std::min(count, tableSize);
        std::copy(items, items + kept, table);
        for (int i = kept; i < count; ++i)
            delete items[i];
        delete[] items;
        items = table;
        count = kept;
        capacity = tableSize;
    }

    /// Makes a table of that size without looking at the former one.
    void Init(int tableSize, bool clear) {
        capacity = std::max(tableSize, 1);
        count = 0;
        items = new T*[capacity];
        if (clear) std::fill(items, items + capacity, nullptr);
    }

    void Swap(int a, int b) { std::swap(items[a], items[b]); }

    // Hoare partition around the middle element; short ranges go to InsertSort, the larger part waits on the stack.
    void QuickSort(int lo, int hi) {
        constexpr int kShort = 8;
        constexpr int kStackSize = 32;
        std::pair<int, int> stack[kStackSize];
        int depth = 0;
        if (hi > lo) stack[depth++] = {lo, hi};
        while (depth > 0) {
            std::tie(lo, hi) = stack[--depth];
            for (;;) {
                const int size = hi - lo + 1;
                if (size <= kShort) {
                    InsertSort(lo, hi);
                    break;
                }
                Swap(lo, lo + size / 2);
                int i = lo;
                int j = hi + 1;
                for (;;) {
                    do
                        ++i;
                    while (i <= hi && !(*items[lo] < *items[i]));
                    do
                        --j;
                    while (j > lo && !(*items[j] < *items[lo]));
                    if (j < i) break;
                    Swap(i, j);
                }
                Swap(lo, j);

                std::pair<int, int> left{lo, j - 1};
                std::pair<int, int> right{i, hi};
                if (left.second - left.first < right.second - right.first) std::swap(left, right);
                // Now `left` is the larger one.
                if (left.first >= left.second) break;
                if (right.first < right.second) {
                    stack[depth++] = left;
                    left = right;
                }
                std::tie(lo, hi) = left;
            }
        }
    }

    // Selection sort from the top; of equal elements the later one goes up.
    void InsertSort(int lo, int hi) {
        for (int top = hi; top > lo; --top) {
            int largest = lo;
            for (int i = lo + 1; i <= top; ++i) {
                if (!(*items[i] < *items[largest])) largest = i;
            }
            Swap(largest, top);
        }
    }

  private:
    void CopyElements(const TZoArray& other) {
        for (int i = 0; i < other.count; ++i) {
            items[i] = new T(*other.items[i]);
            ++count;
        }
    }

    void FreeElements() {
        for (int i = 0; i < count; ++i) {
            delete items[i];
            items[i] = nullptr;
        }
        count = 0;
    }

    void FreeAll() {
        FreeElements();
        delete[] items;
        items = nullptr;
    }

    template <class Before>
    int BinSearch(const T& value, Before before) const {
        int lo = 0;
        int hi = count - 1;
        while (lo <= hi) {
            const int middle = lo + (hi - lo) / 2;
            if (before(*items[middle], value)) {
                lo = middle + 1;
            } else if (before(value, *items[middle])) {
                hi = middle - 1;
            } else {
                return middle;
            }
        }
        return -1;
    }
};
