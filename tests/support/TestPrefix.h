// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Guards of the tests that write to the registry or remove files. They end the program at once when something
// is wrong: a test function that went on after a failed check could destroy what it was meant to spare.
namespace tests
{

// Ends the program unless it runs in the Windows registry that tools/wine-prefix made for tests, which it
// marks with the value `Prefix` = 1 under HKCU\Software\Fernlight Larkspur Tests. A developer who wants to
// run the tests in a Windows account of its own sets that value there.
void requireTestPrefix();

// Ends the program unless this is the test prefix, `root` lies below the temporary folder and `path` below
// `root`, all by their final paths, so that no link leads out. `path` need not exist, but its folder must.
void requireBelow(const QString &root, const QString &path);

// Removes every settings key of the suite when it is made and when it goes.
class RegistryGuard
{
public:
    RegistryGuard();
    ~RegistryGuard();
    RegistryGuard(const RegistryGuard &) = delete;
    RegistryGuard &operator=(const RegistryGuard &) = delete;
};

} // namespace tests
