#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Tools/boardsim/Models/TextAttribute.h"
#include "Tools/boardsim/Models/W1Slave.h"

namespace boardsim {

/// A slave that a search has found, until the kernel forgets it. Found again it is another device: who still
/// has a file of this one open gets ENODEV.
class W1Device : public std::enable_shared_from_this<W1Device> {
public:
    explicit W1Device(std::shared_ptr<W1Slave> slave) : slave_(std::move(slave)) {}

    W1Slave& slave() const { return *slave_; }
    const W1Id& id() const { return slave_->id(); }

    /// "id", "name" and the chip's own files. They keep the device; when it is forgotten they refuse.
    /// Needs a device that a shared pointer owns.
    std::vector<W1File> files();

private:
    friend class W1Bus;

    W1File whileItExists(W1File file);

    std::shared_ptr<W1Slave> slave_;
    unsigned missesLeft_ = 0;
    bool exists_ = true;
};

/// A 1-Wire bus and what the kernel knows of it. Chips that are on the bus become devices when a search finds
/// them; a device whose chip ten searches in a row did not find is forgotten. Searches happen when asked for
/// through "w1_master_search" and take no time; those of a continual search whenever somebody looks.
///
/// Not thread-safe. Source: the kernel's Documentation/w1/w1-generic.rst.
class W1Bus {
public:
    /// @param number as in "w1_bus_master1", from 1.
    explicit W1Bus(unsigned number) : number_(number) {}

    std::string name() const;

    /// Connects a slave, plugged or not; no search happens.
    void connect(std::shared_ptr<W1Slave> slave) { slaves_.push_back(std::move(slave)); }

    const std::vector<std::shared_ptr<W1Slave>>& slaves() const { return slaves_; }

    /// The devices found, the newest last.
    const std::vector<std::shared_ptr<W1Device>>& devices() const { return devices_; }

    /// Looks once who is on the bus. A slave whose ROM comes with a wrong CRC is not found.
    void search();

    /// To be called when somebody is about to look at the bus: searches once when it is searched continually.
    void searchIfContinual();

    /// "w1_master_search" and its neighbours. Adding registers only slaves that are connected.
    std::vector<TextAttribute> attributes();

private:
    std::shared_ptr<W1Device> deviceOf(const W1Id& id) const;
    void forget(const W1Device& device);

    std::errc storeSearch(std::string_view text);
    std::errc storeAdd(std::string_view text);
    std::errc storeRemove(std::string_view text);
    std::errc storeMost(std::string_view text);
    std::string listDevices() const;

    unsigned number_;
    bool isContinual_ = false;
    long most_ = 64;  ///< how many slaves a search finds at most
    unsigned long attempts_ = 0;
    std::vector<std::shared_ptr<W1Slave>> slaves_;
    std::vector<std::shared_ptr<W1Device>> devices_;
};

}  // namespace boardsim
