#pragma once

#include <map>

// An element object that records every construction and destruction, so ownership tests can prove that
// each object is deleted exactly once, or not at all.
struct TrackedObject {
    struct Ledger {
        int nextSerial = 0;
        int alive = 0;
        std::map<int, int> deletions; // serial -> times destroyed
    };
    static Ledger& ledger() {
        static Ledger instance;
        return instance;
    }
    static void ResetLedger() { ledger() = Ledger{}; }
    static int DeletionsOf(const TrackedObject* object) { return ledger().deletions[object->serial]; }
    // Objects that were destroyed more than once or never.
    static int Anomalies() {
        int count = 0;
        for (int serial = 0; serial < ledger().nextSerial; ++serial) count += ledger().deletions[serial] != 1;
        return count;
    }

    explicit TrackedObject(int k = 0) : key(k), serial(Enroll()) {}
    TrackedObject(const TrackedObject& other) : key(other.key), serial(Enroll()) {}
    TrackedObject& operator=(const TrackedObject& other) {
        key = other.key;
        return *this;
    }
    virtual ~TrackedObject() {
        ++ledger().deletions[serial];
        --ledger().alive;
    }

    bool operator==(const TrackedObject& other) const { return key == other.key; }
    bool operator<(const TrackedObject& other) const { return key < other.key; }
    bool operator>(const TrackedObject& other) const { return key > other.key; }

    int key;
    int serial;

private:
    static int Enroll() {
        ++ledger().alive;
        return ledger().nextSerial++;
    }
};

// Proves that deletion goes through the virtual destructor.
struct TrackedDerived : TrackedObject {
    static inline int derivedDestroyed = 0;
    explicit TrackedDerived(int k) : TrackedObject(k) {}
    ~TrackedDerived() override { ++derivedDestroyed; }
};
