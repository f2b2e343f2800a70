// The "WORKLOADS" section: stress workloads that run beside the tests.
//
//   <WORKLOADS>
//     <IAPowerStress> <SSE2> <AutoRun>true</AutoRun> <Duration>min:5</Duration> ... </SSE2> ...
//     <MemoryStress> ... <CopyCompare> ... <GtStress> ...
//   </WORKLOADS>
//
// The record stands beside the configuration record; the caller fills it with GetWorkLoadsXML. It
// may be used by one thread at a time.
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

// Reads the "WORKLOADS" child of `root` (the file's root element). Returns false, changing nothing,
// when there is none or `root` is null. An option that a present workload lacks becomes empty, its
// AutoRun false. A workload that the file lacks keeps its record, except
// that a present "GtStress" names both graphics workloads and switches off an absent one's AutoRun.
VEXOR_EXPORT bool GetWorkLoadsXML(_WORKLOADS_XMLCFG& workloads, const tinyxml2::XMLElement* root);
