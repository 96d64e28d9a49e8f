#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace rfu::python {

namespace py = pybind11;

/// An array of any shape whose numbers are read where they are, whatever the distances between them.
struct ReadArray {
    const char* data;
    std::vector<py::ssize_t> shape;
    std::vector<py::ssize_t> strides;  // bytes

    template <typename Number>
    explicit ReadArray(const py::array_t<Number, 0>& array)
        : data(static_cast<const char*>(static_cast<const void*>(array.data()))),
          shape(array.shape(), array.shape() + array.ndim()),
          strides(array.strides(), array.strides() + array.ndim()) {}

    std::size_t size() const {
        std::size_t product = 1;
        for (const py::ssize_t length : shape) {
            product *= static_cast<std::size_t>(length);
        }
        return product;
    }
};

template <typename Number>
Number numberAt(const char* place) {
    Number number;  // an array need not be aligned
    std::memcpy(&number, place, sizeof number);
    return number;
}

/// Calls use(place in `a`, place in `b`) for each element of two arrays of one shape, in the order of C.
template <typename Use>
void forEachPair(const ReadArray& a, const ReadArray& b, Use use) {
    if (a.size() == 0) {
        return;
    }
    const std::size_t dimensions = a.shape.size();
    const std::size_t outer = dimensions > 0 ? dimensions - 1 : 0;
    const py::ssize_t columns = dimensions > 0 ? a.shape[outer] : 1;
    const py::ssize_t stepOfA = dimensions > 0 ? a.strides[outer] : 0;
    const py::ssize_t stepOfB = dimensions > 0 ? b.strides[outer] : 0;
    std::vector<py::ssize_t> index(outer, 0);
    const char* rowOfA = a.data;
    const char* rowOfB = b.data;
    for (;;) {
        for (py::ssize_t i = 0; i < columns; ++i) {
            use(rowOfA + i * stepOfA, rowOfB + i * stepOfB);
        }
        std::size_t dimension = outer;
        for (; dimension > 0; --dimension) {
            const std::size_t d = dimension - 1;
            rowOfA += a.strides[d];
            rowOfB += b.strides[d];
            if (++index[d] < a.shape[d]) {
                break;
            }
            rowOfA -= a.strides[d] * a.shape[d];
            rowOfB -= b.strides[d] * b.shape[d];
            index[d] = 0;
        }
        if (dimension == 0) {
            return;
        }
    }
}

/// An array that owns the numbers of a vector.
template <typename Number>
py::array_t<Number> arrayOf(std::vector<Number> numbers) {
    auto owner = std::make_unique<std::vector<Number>>(std::move(numbers));
    const std::vector<Number>& owned = *owner;
    const py::capsule capsule(
        owner.get(), [](void* vector) { delete static_cast<std::vector<Number>*>(vector); });
    static_cast<void>(owner.release());  // it is the capsule's now
    return py::array_t<Number>(static_cast<py::ssize_t>(owned.size()), owned.data(), capsule);
}

/// Numbers of a length that is not known before. Where a vector would copy what it holds to grow, and hold it twice
/// while it does, realloc(3) moves the pages of a large block.
template <typename Number>
class GrowingArray {
public:
    /// Lengthens the array.
    /// @return where so many numbers are to be written; until the next call
    Number* append(std::size_t count) {
        if (capacity_ - size_ < count) {
            setCapacity(std::max(size_ + count, 2 * capacity_));
        }
        size_ += count;
        return numbers_.get() + (size_ - count);
    }

    std::size_t size() const { return size_; }

    /// The array of Python that owns the numbers. To be called last, and not when it is empty.
    py::array_t<Number> release() {
        setCapacity(size_);
        const Number* numbers = numbers_.get();
        const py::capsule capsule(numbers, [](void* block) { std::free(block); });
        static_cast<void>(numbers_.release());  // it is the capsule's now
        return py::array_t<Number>(static_cast<py::ssize_t>(size_), numbers, capsule);
    }

private:
    struct Free {
        void operator()(Number* block) const { std::free(block); }
    };

    void setCapacity(std::size_t count) {
        auto* moved = static_cast<Number*>(std::realloc(numbers_.get(), count * sizeof(Number)));
        if (moved == nullptr) {
            throw std::bad_alloc();
        }
        static_cast<void>(numbers_.release());
        numbers_.reset(moved);
        capacity_ = count;
    }

    std::unique_ptr<Number, Free> numbers_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace rfu::python
