#pragma once

#include "platform/os/registry.h"

#include <QList>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

// A registry kept in memory. A test seeds it with keys and values, makes single
// operations fail, and reads back every key and value afterwards. Key paths and
// value names are found ignoring case, as the machine's registry finds them;
// subkeys are enumerated in the order in which they were made.
class MemoryRegistry : public os::Registry {
public:
    struct Value {
        bool number = false;
        QString text;
        quint32 dword = 0;
    };

    // A key, with the keys above it.
    void addKey(Hive hive, const QString& path) { node(hive, path, true); }
    void seedText(Hive hive, const QString& path, const QString& name, const QString& text) {
        put(*node(hive, path, true), name, Value{false, text, 0});
    }
    void seedNumber(Hive hive, const QString& path, const QString& name, quint32 number) {
        put(*node(hive, path, true), name, Value{true, QString(), number});
    }

    // Operations that fail although they could succeed. A key whose open fails
    // can still be opened by create, as the machine's registry does.
    void failOpen(Hive hive, const QString& path) { failures_.insert(rule(QStringLiteral("open"), hive, path)); }
    void failCreate(Hive hive, const QString& path) { failures_.insert(rule(QStringLiteral("create"), hive, path)); }
    void failQuery(Hive hive, const QString& path, const QString& name) {
        failures_.insert(rule(QStringLiteral("query"), hive, path, name));
    }
    void failSet(Hive hive, const QString& path, const QString& name) {
        failures_.insert(rule(QStringLiteral("set"), hive, path, name));
    }

    // Reading back.
    bool hasKey(Hive hive, const QString& path) const { return find(hive, path) != nullptr; }
    // Every key, as "HKLM\path" or "HKCU\path", in the order made.
    QStringList keys() const {
        QStringList out;
        for (const Node& n : nodes_)
            out.append(hiveName(n.hive) + QLatin1Char('\\') + n.path);
        return out;
    }
    // The names of the subkeys right below a key, in the order made.
    QStringList subkeys(Hive hive, const QString& path) const {
        QStringList out;
        const QString head = path + QLatin1Char('\\');
        for (const Node& n : nodes_) {
            if (n.hive == hive && n.path.startsWith(head, Qt::CaseInsensitive) &&
                !n.path.mid(head.size()).contains(QLatin1Char('\\')))
                out.append(n.path.mid(head.size()));
        }
        return out;
    }
    std::optional<QString> text(Hive hive, const QString& path, const QString& name) const {
        const Value* v = value(hive, path, name);
        if (!v || v->number)
            return std::nullopt;
        return v->text;
    }
    std::optional<quint32> number(Hive hive, const QString& path, const QString& name) const {
        const Value* v = value(hive, path, name);
        if (!v || !v->number)
            return std::nullopt;
        return v->dword;
    }
    // Every value written through the registry, in order: "HKCU\path|name=value".
    QStringList writes;
    // Keys opened or made and not closed yet.
    int openKeys() const { return static_cast<int>(handles_.size()); }

    bool open(Hive hive, const QString& path, Access access, Key& key) override {
        if (failures_.contains(rule(QStringLiteral("open"), hive, path)) || !find(hive, path))
            return false;
        key = handle(hive, path, access);
        return true;
    }
    bool create(Hive hive, const QString& path, Access access, Key& key) override {
        if (failures_.contains(rule(QStringLiteral("create"), hive, path)))
            return false;
        node(hive, path, true);
        key = handle(hive, path, access);
        return true;
    }
    bool enumerate(Key key, int index, QString& name) override {
        const auto h = handles_.find(key);
        if (h == handles_.end())
            return false;
        const QStringList names = subkeys(h->hive, h->path);
        if (index < 0 || index >= names.size())
            return false;
        name = names.at(index);
        return true;
    }
    bool queryText(Key key, const QString& name, int bufferSize, QString& value) override {
        const Value* v = queried(key, name);
        if (!v || v->number || v->text.size() + 1 > bufferSize)
            return false;
        value = v->text;
        return true;
    }
    bool queryNumber(Key key, const QString& name, quint32& value) override {
        const Value* v = queried(key, name);
        if (!v || !v->number)
            return false;
        value = v->dword;
        return true;
    }
    bool setText(Key key, const QString& name, const QString& value) override {
        return set(key, name, Value{false, value, 0});
    }
    bool setNumber(Key key, const QString& name, quint32 value) override {
        return set(key, name, Value{true, QString(), value});
    }
    void close(Key key) override { handles_.remove(key); }

private:
    struct Node {
        Hive hive;
        QString path;
        QList<QPair<QString, Value>> values;
    };
    struct Handle {
        Hive hive;
        QString path;
        Access access;
    };

    static QString hiveName(Hive hive) {
        return hive == Hive::LocalMachine ? QStringLiteral("HKLM") : QStringLiteral("HKCU");
    }
    static QString rule(const QString& what, Hive hive, const QString& path, const QString& name = QString()) {
        return what + QLatin1Char('|') + hiveName(hive) + QLatin1Char('\\') + path.toLower() + QLatin1Char('|') +
               name.toLower();
    }
    const Node* find(Hive hive, const QString& path) const {
        for (const Node& n : nodes_)
            if (n.hive == hive && n.path.compare(path, Qt::CaseInsensitive) == 0)
                return &n;
        return nullptr;
    }
    Node* node(Hive hive, const QString& path, bool make) {
        for (Node& n : nodes_)
            if (n.hive == hive && n.path.compare(path, Qt::CaseInsensitive) == 0)
                return &n;
        if (!make)
            return nullptr;
        const qsizetype cut = path.lastIndexOf(QLatin1Char('\\'));
        if (cut > 0)
            node(hive, path.left(cut), true);
        nodes_.append(Node{hive, path, {}});
        return &nodes_.last();
    }
    static void put(Node& n, const QString& name, const Value& v) {
        for (auto& pair : n.values) {
            if (pair.first.compare(name, Qt::CaseInsensitive) == 0) {
                pair.second = v;
                return;
            }
        }
        n.values.append({name, v});
    }
    const Value* value(Hive hive, const QString& path, const QString& name) const {
        const Node* n = find(hive, path);
        if (!n)
            return nullptr;
        for (const auto& pair : n->values)
            if (pair.first.compare(name, Qt::CaseInsensitive) == 0)
                return &pair.second;
        return nullptr;
    }
    Key handle(Hive hive, const QString& path, Access access) {
        const Key key = ++lastKey_;
        handles_.insert(key, Handle{hive, path, access});
        return key;
    }
    const Value* queried(Key key, const QString& name) const {
        const auto h = handles_.find(key);
        if (h == handles_.end() || failures_.contains(rule(QStringLiteral("query"), h->hive, h->path, name)))
            return nullptr;
        return value(h->hive, h->path, name);
    }
    bool set(Key key, const QString& name, const Value& v) {
        const auto h = handles_.find(key);
        if (h == handles_.end() || h->access != Access::Full ||
            failures_.contains(rule(QStringLiteral("set"), h->hive, h->path, name)))
            return false;
        Node* n = node(h->hive, h->path, false);
        if (!n)
            return false;
        put(*n, name, v);
        writes.append(hiveName(h->hive) + QLatin1Char('\\') + n->path + QLatin1Char('|') + name + QLatin1Char('=') +
                      (v.number ? QString::number(v.dword) : v.text));
        return true;
    }

    QList<Node> nodes_;
    QMap<Key, Handle> handles_;
    QSet<QString> failures_;
    Key lastKey_ = 0;
};
