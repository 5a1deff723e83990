// The strictest foundation library that the module can be built against: it declares what docs/porting.md lists and
// nothing more.
#pragma once

#if !defined(_WIN32)
#pragma GCC visibility push(default)
#endif

class FqDisposable {
public:
    FqDisposable(const FqDisposable&) = delete;
    FqDisposable& operator=(const FqDisposable&) = delete;
    [[nodiscard]] virtual int AddRef() = 0;
    [[nodiscard]] virtual int Release() = 0;

protected:
    FqDisposable() = default;
    virtual ~FqDisposable();
    virtual void Dispose() = 0;
};

class FqGuardDisposable : public FqDisposable {
public:
    int AddRef() final;
    int Release() final;

protected:
    FqGuardDisposable();
    ~FqGuardDisposable() override;
};

class FqDisposableCollection : public FqGuardDisposable {
public:
    [[nodiscard]] virtual int Add(FqDisposable* item);
    virtual void Clear();
    [[nodiscard]] virtual int GetCount();
    [[nodiscard]] virtual FqDisposable* GetItem(int index);

protected:
    FqDisposableCollection();
    ~FqDisposableCollection() override;
    void Dispose() override;
};

/// Can be moved, and neither copied nor assigned.
template <class T>
class [[nodiscard]] Ptr {
public:
    explicit Ptr(T* object) : object_(object) {}
    Ptr(Ptr&& other) noexcept : object_(other.object_) { other.object_ = nullptr; }
    ~Ptr()
    {
        if (object_ != nullptr)
            static_cast<void>(object_->Release());
    }
    [[nodiscard]] T* get() const { return object_; }
    [[nodiscard]] T* operator->() const { return object_; }

private:
    T* object_;
};

#if !defined(_WIN32)
#pragma GCC visibility pop
#endif
