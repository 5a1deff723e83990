// The smallest foundation library that the module can be built against, without the project's own interfaces. It
// declares exactly what docs/porting.md lists, and a test compares the two.
#pragma once

#pragma GCC visibility push(default)

class FqDisposable {
protected:
    virtual ~FqDisposable();
    virtual void Dispose() = 0;
};

class FqGuardDisposable : public FqDisposable {
protected:
    ~FqGuardDisposable() override;
};

class FqDisposableCollection : public FqGuardDisposable {
public:
    virtual int Add(FqDisposable*);
    virtual void Clear();
    virtual int GetCount();
    virtual FqDisposable* GetItem(int);

protected:
    ~FqDisposableCollection() override;
    void Dispose() override;
};

template <class T>
class Ptr {
public:
    explicit Ptr(T* object) : object_(object) {}
    T* get() const { return object_; }
    T* operator->() const { return object_; }

private:
    T* object_;
};

#pragma GCC visibility pop
