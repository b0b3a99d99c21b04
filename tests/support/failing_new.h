#pragma once

namespace kavit::test {

// Lets operator new of this thread throw std::bad_alloc at its n-th call from now (1: the next) and
// at none after it. Failed() says whether it came to that.
class FailingNew {
  public:
    explicit FailingNew(int at);
    ~FailingNew();
    FailingNew(const FailingNew&) = delete;
    FailingNew& operator=(const FailingNew&) = delete;

    [[nodiscard]] bool Failed() const;
};

}  // namespace kavit::test
