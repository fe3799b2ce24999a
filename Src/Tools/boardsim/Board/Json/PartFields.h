#pragma once

#include "Tools/boardsim/Board/BoardDescription.h"
#include "Tools/boardsim/Board/Json/Fields.h"

namespace boardsim {

// The fields of the parts of a board, each table in the file of its subject.

template <>
const std::vector<Field<BoardDescription>>& fieldsOf();

// FpgaFields.cpp
template <>
const std::vector<Field<Core>>& fieldsOf();
template <>
const std::vector<Field<FpgaPart>>& fieldsOf();
template <>
const std::vector<Field<CpldPart>>& fieldsOf();

// PanelFields.cpp
template <>
const std::vector<Field<PanelGeometry>>& fieldsOf();
template <>
const std::vector<Field<SpiPlace>>& fieldsOf();
template <>
const std::vector<Field<PanelPart>>& fieldsOf();
template <>
const std::vector<Field<GpioChip>>& fieldsOf();

// MdioFields.cpp
template <>
const std::vector<Field<MdioPhy>>& fieldsOf();
template <>
const std::vector<Field<MdioPart>>& fieldsOf();
template <>
const std::vector<Field<MiiPart>>& fieldsOf();

// NetworkFields.cpp
template <>
const std::vector<Field<InbandPart>>& fieldsOf();
template <>
const std::vector<Field<PatternPart>>& fieldsOf();

// StatusFields.cpp
template <>
const std::vector<Field<TimeCode>>& fieldsOf();
template <>
const std::vector<Field<SyncSettings>>& fieldsOf();
template <>
const std::vector<Field<SyncPart>>& fieldsOf();
template <>
const std::vector<Field<MiscPart>>& fieldsOf();
template <>
const std::vector<Field<TemperaturePart>>& fieldsOf();
// RomFields.cpp
template <>
const std::vector<Field<CardSerial>>& fieldsOf();
template <>
const std::vector<Field<RomPart>>& fieldsOf();
template <>
const std::vector<Field<HwmonSensor>>& fieldsOf();

// W1Fields.cpp
template <>
const std::vector<Field<EepromRecord>>& fieldsOf();
template <>
const std::vector<Field<W1EepromPart>>& fieldsOf();
template <>
const std::vector<Field<W1SensorPart>>& fieldsOf();
template <>
const std::vector<Field<W1BusPart>>& fieldsOf();

// I2cFields.cpp
template <>
const std::vector<Field<DeviceField>>& fieldsOf();
template <>
const std::vector<Field<PcbField>>& fieldsOf();
template <>
const std::vector<Field<IdentityMemory>>& fieldsOf();
template <>
const std::vector<Field<I2cBusName>>& fieldsOf();
template <>
const std::vector<Field<I2cDevice>>& fieldsOf();
template <>
const std::vector<Field<EepromGeometry>>& fieldsOf();
template <>
const std::vector<Field<I2cDescription>>& fieldsOf();

// What is the same wherever it stands.
Codec<std::string> coreName();
Codec<std::string> interfaceName();
Codec<MacAddress> macAddress();  ///< "02:00:5e:10:20:30"

/// A sync block whose time code has no frame that its rate has not.
Codec<SyncPart> syncBlock();

/// The I2C buses with what no single field can tell.
Codec<I2cDescription> i2cBuses();

}  // namespace boardsim
