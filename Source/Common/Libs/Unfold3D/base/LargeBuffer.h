#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>

namespace unfold3d
{

/// Memory that is too large to be touched without need: it is not initialised, and in large pages
/// where the system has them.
class LargeMemory
{
public:
    explicit LargeMemory(std::size_t bytes);
    void* data() const { return data_.get(); }

private:
    struct Free
    {
        void operator()(void* data) const;
    };
    std::unique_ptr<void, Free> data_;
};

/// Such memory as a buffer that grows.
class LargeBuffer
{
public:
    /// Makes room for `size` numbers; what they are then is not said.
    template <class Number>
    Number* reserve(std::size_t size)
    {
        static_assert(std::is_trivially_copyable_v<Number>);
        const std::size_t bytes = size * sizeof(Number);
        if (!memory_ || bytes > bytes_) {
            memory_.reset(); // two at a time would double the memory
            memory_ = std::make_unique<LargeMemory>(bytes);
            bytes_ = bytes;
        }
        return data<Number>();
    }
    template <class Number>
    Number* data() const
    {
        return memory_ ? static_cast<Number*>(memory_->data()) : nullptr;
    }

private:
    std::unique_ptr<LargeMemory> memory_;
    std::size_t bytes_ = 0;
};

} // namespace unfold3d
