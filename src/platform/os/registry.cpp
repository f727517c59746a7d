#include "platform/os/registry.h"

namespace os {

bool SystemRegistry::open(Hive, const QString&, Access, Key&) { return false; }

bool SystemRegistry::create(Hive, const QString&, Access, Key&) { return false; }

bool SystemRegistry::enumerate(Key, int, QString&) { return false; }

bool SystemRegistry::queryText(Key, const QString&, int, QString&) { return false; }

bool SystemRegistry::queryNumber(Key, const QString&, quint32&) { return false; }

bool SystemRegistry::setText(Key, const QString&, const QString&) { return false; }

bool SystemRegistry::setNumber(Key, const QString&, quint32) { return false; }

void SystemRegistry::close(Key) {}

SystemRegistry& SystemRegistry::instance() {
    static SystemRegistry registry;
    return registry;
}

} // namespace os
