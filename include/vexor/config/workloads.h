// The "WORKLOADS" section: stress workloads that run beside the tests.
//
//   <WORKLOADS>
//     <IAPowerStress> <SSE2> <AutoRun>true</AutoRun> <Duration>min:5</Duration> ... </SSE2> ...
//     <MemoryStress> ... <CopyCompare> ... <GtStress> ...
//   </WORKLOADS>
//
// The record is not part of _XML_FULL_CFG; the caller fills it with GetWorkLoadsXML. One thread at
// a time may use a record.
#pragma once

#include <cstdint>
#include <string>

#include "vexor/config/config_record.h"
#include "vexor/export.h"

struct _CPU_WORKLOAD_CFG : vexor::ConfigRecord {
  bool AutoRun = false;
  std::string PkgAffinity;
  std::string ModuleAffinity;
  std::string CoreAffinity;
  std::string StartDelayTime;
  std::string Duration;
  std::string Log_Level;
};

struct _MEMORY_WORKLOAD_CFG : vexor::ConfigRecord {
  bool AutoRun = false;
  std::string Algorithm;
  std::string PkgAffinity;
  std::string ModuleAffinity;
  std::string CoreAffinity;
  std::string Duration;
  std::string IdleTime;
  std::string StartDelayTime;
  std::string DataSizeInDW;
  std::string Producers;
  std::string Consumers;
  std::string Log_Level;
};

struct _COPY_COMPARE_CFG : vexor::ConfigRecord {
  std::string Duration;
  std::string IdleTime;
  std::string StartDelayTime;
  std::string Source;
  std::string CopyTo;
  std::string Cycle;
  std::string DataSizeMB;
  std::string Thread;
  std::string Log_Level;
};

struct _GFX_WORKLOAD_CFG : vexor::ConfigRecord {
  bool AutoRun = false;
  std::string IdleTime;
  std::string StartDelayTime;
  std::string Duration;
  std::string Log_Level;
  std::string Name;  // "BouncingBall" or "Media3DPTV" once "GtStress" was read
};

struct _WORKLOADS_XMLCFG {
  std::uint64_t SpareWord = 0;  // never touched by the library
  _CPU_WORKLOAD_CFG SSE2;
  _CPU_WORKLOAD_CFG AVX128;
  _CPU_WORKLOAD_CFG AVX128Lite;
  _CPU_WORKLOAD_CFG AVX256;
  _CPU_WORKLOAD_CFG AVX256Lite;
  _CPU_WORKLOAD_CFG AVX512;
  _CPU_WORKLOAD_CFG AVX512Lite;
  _CPU_WORKLOAD_CFG DGEMM;
  _CPU_WORKLOAD_CFG AVX512_VNNI;
  _MEMORY_WORKLOAD_CFG L1;
  _MEMORY_WORKLOAD_CFG L2;
  _MEMORY_WORKLOAD_CFG L3;
  _MEMORY_WORKLOAD_CFG DRAM;
  _MEMORY_WORKLOAD_CFG Splits;
  _MEMORY_WORKLOAD_CFG ProCon;
  _COPY_COMPARE_CFG CopyCompare;
  _GFX_WORKLOAD_CFG BouncingBall;
  _GFX_WORKLOAD_CFG Media3DPTV;
};

// Reads the "WORKLOADS" child of `root`, the root element of the file. Returns false and changes
// nothing if there is none or `root` is null. If the file has a workload's element, options missing
// from it become empty, and a missing AutoRun false. If the file lacks a workload, its record stays
// as it was. One exception: "GtStress" sets the names of both its graphics workloads, and clears
// AutoRun of one that it lacks.
VEXOR_EXPORT bool GetWorkLoadsXML(_WORKLOADS_XMLCFG& workloads, const tinyxml2::XMLElement* root);
