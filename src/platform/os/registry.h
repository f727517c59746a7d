#pragma once

#include <QString>

#include <cstdint>

namespace os {

// The machine's registry as the program reads and writes it: keys of the local
// machine's and of the current user's hive, text and 32-bit values. Key paths
// are registry paths, their parts joined by backslashes. Every operation
// answers success as a flag; a failure leaves the handle as it was.
class Registry {
public:
    enum class Hive { LocalMachine, CurrentUser };
    enum class Access { Read, Full };
    using Key = std::uintptr_t; // an open key; 0 is none

    virtual ~Registry() = default;

    // Opens an existing key.
    virtual bool open(Hive hive, const QString& path, Access access, Key& key) = 0;
    // Opens the key, making it and the keys above it first where they are missing.
    virtual bool create(Hive hive, const QString& path, Access access, Key& key) = 0;
    // The name of the subkey at the index (from 0); false past the last one.
    virtual bool enumerate(Key key, int index, QString& name) = 0;
    // A text value without its terminator. The value and its terminator must
    // fit into bufferSize characters, or the read fails.
    virtual bool queryText(Key key, const QString& name, int bufferSize, QString& value) = 0;
    virtual bool queryNumber(Key key, const QString& name, quint32& value) = 0;
    // Writing needs a key opened with full access.
    virtual bool setText(Key key, const QString& name, const QString& value) = 0;
    virtual bool setNumber(Key key, const QString& name, quint32 value) = 0;
    virtual void close(Key key) = 0;
};

// The registry of this platform, which keeps no such keys: nothing opens and
// nothing can be made, so every step that needs a key is passed over.
class SystemRegistry : public Registry {
public:
    bool open(Hive hive, const QString& path, Access access, Key& key) override;
    bool create(Hive hive, const QString& path, Access access, Key& key) override;
    bool enumerate(Key key, int index, QString& name) override;
    bool queryText(Key key, const QString& name, int bufferSize, QString& value) override;
    bool queryNumber(Key key, const QString& name, quint32& value) override;
    bool setText(Key key, const QString& name, const QString& value) override;
    bool setNumber(Key key, const QString& name, quint32 value) override;
    void close(Key key) override;
    static SystemRegistry& instance();
};

} // namespace os
