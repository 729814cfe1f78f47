// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Com.h"
#include "platform/Handle.h"

#include <QTest>

#include <vector>

namespace
{

std::vector<int> closed;

struct CountingTraits {
    using Raw = int;
    static Raw none() noexcept { return -1; }
    static void close(Raw raw) noexcept
    {
        closed.push_back(raw);
        SetLastError(ERROR_INVALID_HANDLE);
    }
};
using Counted = platform::UniqueHandle<CountingTraits>;

} // namespace

class TestHandle : public QObject
{
    Q_OBJECT

private slots:
    void init() { closed.clear(); }
    void closesOnceAndOnlyWhatIsHeld();
    void noneDiffersByKind();
    void comIsPaired();
};

void TestHandle::closesOnceAndOnlyWhatIsHeld()
{
    // "if (!call(handle)) return GetLastError();" with owners that go in between.
    SetLastError(ERROR_ACCESS_DENIED);
    {
        Counted none;
        Counted zero(0); // a valid value here, unlike null for a pointer
        QVERIFY(!none);
        QVERIFY(zero);
        Counted moved = std::move(zero);
        QVERIFY(!zero);
        moved = std::move(moved);
        QCOMPARE(moved.get(), 0);
        Counted other(2);
        other = std::move(moved);
        QCOMPARE(closed, std::vector{2});
        *other.put() = 3;
        QCOMPARE(closed, (std::vector{2, 0}));
        Counted released(4);
        QCOMPARE(released.release(), 4);
        other.reset(5);
        QCOMPARE(closed, (std::vector{2, 0, 3}));
    }
    QCOMPARE(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
    QCOMPARE(closed, (std::vector{2, 0, 3, 5}));
}

void TestHandle::noneDiffersByKind()
{
    QVERIFY(!platform::FileHandle(INVALID_HANDLE_VALUE));
    QVERIFY(!platform::FindHandle(INVALID_HANDLE_VALUE));
    QVERIFY(!platform::ObjectHandle(nullptr));
    QVERIFY(!platform::RegKey());
    QVERIFY(!platform::Library());
}

void TestHandle::comIsPaired()
{
    const auto apartment = [] {
        APTTYPE type = APTTYPE_CURRENT;
        APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
        return CoGetApartmentType(&type, &qualifier);
    };
    QCOMPARE(apartment(), CO_E_NOTINITIALIZED);
    {
        const platform::ComScope outer;
        QVERIFY(outer.usable());
        {
            const platform::ComScope again;
            const platform::ComScope otherModel(COINIT_MULTITHREADED);
            QVERIFY(again.usable());
            QVERIFY(otherModel.usable());
        }
        QCOMPARE(apartment(), S_OK);
    }
    QCOMPARE(apartment(), CO_E_NOTINITIALIZED);
}

QTEST_APPLESS_MAIN(TestHandle)

#include "tst_handle.moc"
