// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/SystemInfo/engine/FakeMachine.h"

// Answers as Microsoft's documentation of the classes describes them for three kinds of machine, written by
// hand. 64-bit numbers are texts, VARIANT_TRUE is true.
namespace recordings
{

inline QString s(const char *text)
{
    return QString::fromUtf8(text);
}

inline void laptop(tests::FakeMachine &machine)
{
    auto &wmi = machine.fakeWmi.answers;
    wmi[s("Win32_Processor")] = {{{s("Name"), s("Intel(R) Core(TM) i7-8650U CPU @ 1.90GHz")},
                                  {s("Description"), s("Intel64 Family 6 Model 142 Stepping 10")},
                                  {s("Manufacturer"), s("GenuineIntel")},
                                  {s("SocketDesignation"), s("U3E1")},
                                  {s("ProcessorId"), s("BFEBFBFF000806EA")},
                                  {s("MaxClockSpeed"), 3000},
                                  {s("DataWidth"), 64},
                                  {s("L2CacheSize"), 1024},
                                  {s("L3CacheSize"), 8192},
                                  {s("NumberOfCores"), 4},
                                  {s("ThreadCount"), 8},
                                  {s("VirtualizationFirmwareEnabled"), true},
                                  {s("VMMonitorModeExtensions"), true}}};
    wmi[s("Win32_CacheMemory WHERE Level = 3")] = {{{s("MaxCacheSize"), 256}}, {{s("MaxCacheSize"), 4096}}};
    wmi[s("Win32_PhysicalMemory")] = {{{s("DeviceLocator"), s("DIMM A")},
                                       {s("MemoryType"), 0},
                                       {s("SMBIOSMemoryType"), 34},
                                       {s("PartNumber"), s("M471A2K43CB1")},
                                       {s("Speed"), 2400},
                                       {s("Capacity"), s("17179869184")},
                                       {s("Manufacturer"), s("0x80CE")}},
                                      {{s("DeviceLocator"), s("DIMM B")},
                                       {s("MemoryType"), 34},
                                       {s("Capacity"), s("536870912")},
                                       {s("Manufacturer"), s("0x80ce")}}};
    wmi[s("Win32_BaseBoard")] = {{{s("Product"), s("0KP0FT")}, {s("SerialNumber"), s("/8X1/CN12/")}}};
    wmi[s("Win32_BIOS")] = {{{s("Name"), s("1.30.0")}, {s("ReleaseDate"), s("20120608000000.000000+000")}}};
    wmi[s("FROM Win32_DiskDrive")] = {
        {{s("DeviceID"), s("\\\\.\\PHYSICALDRIVE0")},
         {s("Caption"), s("NVMe disk")},
         {s("CapabilityDescriptions"), QStringList{s("Random Access"), s("Supports Writing")}},
         {s("Size"), s("512105932800")},
         {s("NeedsCleaning"), false},
         {s("InstallDate"), s("not a date")}}};
    wmi[s("FROM Win32_LogicalDisk")] = {{{s("DeviceID"), s("C:")},
                                         {s("VolumeName"), s("Windows")},
                                         {s("Compressed"), false},
                                         {s("SupportsDiskQuotas"), true},
                                         {s("FreeSpace"), s("107374182400")},
                                         {s("Size"), s("511000000000")}},
                                        {{s("DeviceID"), s("D:")}}};
    wmi[s("DeviceID='\\\\\\\\.\\\\PHYSICALDRIVE0'} where AssocClass=Win32_DiskDriveToDiskPartition")] = {
        {{s("DeviceID"), s("Disk #0, Partition #0")}}, {{s("DeviceID"), s("Disk #0, Partition #1")}}};
    wmi[s("DeviceID='Disk #0, Partition #1'} where AssocClass=Win32_LogicalDiskToPartition")] = {
        {{s("DeviceID"), s("c:")}}};
    wmi[s("DeviceID='Disk #0, Partition #0'} where AssocClass=Win32_LogicalDiskToPartition")] = {
        {{s("DeviceID"), s("X:")}}}; // no volume of that letter is told
    machine.memoryStatus = {quint64(15.8 * (1 << 30)), quint64(4) << 30, quint64(18) << 30, quint64(6) << 30};
}

// The second processor tells less than the first, and its clock is above what a 32-bit number with a sign
// holds.
inline void twoSocketServer(tests::FakeMachine &machine)
{
    machine.fakeWmi.answers[s("Win32_Processor")] = {
        {{s("Name"), s("Xeon A")},
         {s("MaxClockSpeed"), 3600},
         {s("L2CacheSize"), 1025},
         {s("L3CacheSize"), 36864},
         {s("ThreadCount"), 2},
         {s("NumberOfCores"), 24}},
        {{s("Name"), s("Xeon B")}, {s("L3CacheSize"), -2147483647 - 1}}};
    machine.fakeWmi.answers[s("Win32_CacheMemory")] = {{{s("MaxCacheSize"), 1536}}};
    machine.memoryStatus = {quint64(16) << 30, (quint64(15) << 30) + 1, 0, 0};
}

inline void virtualMachine(tests::FakeMachine &machine)
{
    machine.fakeWmi.answers[s("Win32_Processor")] = {{{s("Name"), s("Virtual CPU")},
                                                      {s("MaxClockSpeed"), 2596},
                                                      {s("L3CacheSize"), 512},
                                                      {s("NumberOfCores"), 1},
                                                      {s("VirtualizationFirmwareEnabled"), false},
                                                      {s("VMMonitorModeExtensions"), false}}};
    machine.fakeWmi.answers[s("Win32_CacheMemory")] = {};
    machine.fakeWmi.answers[s("FROM Win32_DiskDrive")] = {
        {{s("DeviceID"), s("vd0")}, {s("Caption"), s("Virtual")}}};
    machine.fakeWmi.answers[s("FROM Win32_LogicalDisk")] = {};
}

} // namespace recordings
