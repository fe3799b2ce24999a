#pragma once

#include <memory>

#include "Vl/HAL/Board/CPInterface.h"
#include "Vl/HAL/Chips/GenericEthernetPhy.h"

/// The control processor alone, as no variant.
class TestBoard : public Valen::CPInterface {
public:
    std::shared_ptr<Valen::HAL::GenericEthernetPhy> getPhy(int /*port*/) override { return nullptr; }
    int GetCardTemperature(unsigned int& /*temperature*/, Enums::Temperature::Type /*place*/) override {
        return -1;
    }
};
