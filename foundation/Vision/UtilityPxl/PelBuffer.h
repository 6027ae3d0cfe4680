#pragma once

#include <array>
#include <cstring>
#include <exception>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

// The lower image layer: plain pel buffers with their own failure class. Copies of a buffer
// share its pels, as handles do; a deep copy is made explicitly with tvPackedCopy.

class tvException : public std::exception {
public:
    enum class Kind { badArgument, singular };

    tvException(Kind kind, std::wstring message)
        : kind_(kind)
        , message_(std::move(message)) {}

    Kind kind() const { return kind_; }
    std::wstring const& message() const { return message_; }
    char const* what() const noexcept override { return "tvException"; }

private:
    Kind kind_;
    std::wstring message_;
};

// Read-only view of a pel buffer. Rows are rowUpdate() pels apart.
template <class T> class tvPelBuffer_const {
public:
    tvPelBuffer_const() = default;

    int width() const { return width_; }
    int height() const { return height_; }
    int rowUpdate() const { return rowUpdate_; }
    T const* pointToOffset() const { return pels_ ? pels_->data() : nullptr; }

protected:
    // Alignment is in bytes: each row starts on a multiple of it, so 1 packs the rows.
    tvPelBuffer_const(int width, int height, int alignment)
        : width_(width)
        , height_(height) {
        if (width < 0 || height < 0)
            throw tvException(tvException::Kind::badArgument,
                              L"The size of a pel buffer cannot be negative.");
        if (alignment < 1)
            throw tvException(tvException::Kind::badArgument,
                              L"The row alignment of a pel buffer must be at least 1.");
        int const pelsPerAlignedBlock =
            alignment / std::gcd(alignment, static_cast<int>(sizeof(T)));
        rowUpdate_ = (width + pelsPerAlignedBlock - 1) / pelsPerAlignedBlock * pelsPerAlignedBlock;
        pels_ = std::make_shared<std::vector<T>>(static_cast<std::size_t>(rowUpdate_) * height);
    }

    T* writablePels() const { return pels_ ? pels_->data() : nullptr; }

private:
    std::shared_ptr<std::vector<T>> pels_;
    int width_ = 0;
    int height_ = 0;
    int rowUpdate_ = 0;
};

template <class T> class tvPelBuffer : public tvPelBuffer_const<T> {
public:
    tvPelBuffer() = default;
    tvPelBuffer(int width, int height, int alignment)
        : tvPelBuffer_const<T>(width, height, alignment) {}

    T* pointToOffset() const { return this->writablePels(); }
};

// A new buffer with packed rows holding the same pels as the source.
template <class T> tvPelBuffer<T> tvPackedCopy(tvPelBuffer_const<T> const& source) {
    tvPelBuffer<T> copy(source.width(), source.height(), 1);
    for (int row = 0; row < source.height(); ++row)
        std::memcpy(copy.pointToOffset() + static_cast<std::size_t>(row) * copy.rowUpdate(),
                    source.pointToOffset() + static_cast<std::size_t>(row) * source.rowUpdate(),
                    sizeof(T) * source.width());
    return copy;
}

// Tag of a pel held in three 8-bit planes.
struct tv3PlanePel {};

template <class T> class tvPelRoot;

// Three planes of equal size.
template <> class tvPelRoot<tv3PlanePel> {
public:
    tvPelRoot(tvPelBuffer<unsigned char> plane0, tvPelBuffer<unsigned char> plane1,
              tvPelBuffer<unsigned char> plane2)
        : planes_{std::move(plane0), std::move(plane1), std::move(plane2)} {
        for (auto const& plane : planes_)
            if (plane.width() != planes_[0].width() || plane.height() != planes_[0].height())
                throw tvException(tvException::Kind::badArgument,
                                  L"The three planes of a pel root must have the same size.");
    }

    tvPelBuffer<unsigned char> const& plane(int index) const {
        if (index < 0 || index > 2)
            throw tvException(tvException::Kind::badArgument,
                              L"A three-plane pel root has planes 0, 1 and 2.");
        return planes_[index];
    }

private:
    std::array<tvPelBuffer<unsigned char>, 3> planes_;
};

class tv3PlanePelBuffer_const {
public:
    explicit tv3PlanePelBuffer_const(tvPelRoot<tv3PlanePel> root)
        : root_(std::move(root)) {}

    int width() const { return root_.plane(0).width(); }
    int height() const { return root_.plane(0).height(); }
    tvPelBuffer_const<unsigned char> plane(int index) const { return root_.plane(index); }

protected:
    tvPelRoot<tv3PlanePel> const& root() const { return root_; }

private:
    tvPelRoot<tv3PlanePel> root_;
};

class tv3PlanePelBuffer : public tv3PlanePelBuffer_const {
public:
    explicit tv3PlanePelBuffer(tvPelRoot<tv3PlanePel> root)
        : tv3PlanePelBuffer_const(std::move(root)) {}

    tvPelBuffer<unsigned char> plane(int index) const { return root().plane(index); }
};

// x' = a·x + b·y + tx, y' = c·x + d·y + ty.
class tv2XformLinear {
public:
    tv2XformLinear() = default;
    tv2XformLinear(double a, double b, double c, double d, double tx, double ty)
        : a_(a)
        , b_(b)
        , c_(c)
        , d_(d)
        , tx_(tx)
        , ty_(ty) {}

    double a() const { return a_; }
    double b() const { return b_; }
    double c() const { return c_; }
    double d() const { return d_; }
    double tx() const { return tx_; }
    double ty() const { return ty_; }

    tv2XformLinear inverse() const;

private:
    double a_ = 1, b_ = 0, c_ = 0, d_ = 1, tx_ = 0, ty_ = 0;
};
