// One save of the account card, one transaction: the entries, the head row and
// the marks a press of a button writes go in together or not at all.
//
// Opened before the first statement of a save and committed after the last;
// an error that leaves the save (the customer's card has no trap, so a failing
// statement ends the program) rolls back what the save had written. On the
// supplier's card the save report catches each failing statement and the save
// goes on inside the transaction, which is committed at its end with what did
// succeed.
#pragma once
#include "core/record_store.h"

#include <sqlite3.h>

namespace vel {

class TransaccionFicha {
public:
    explicit TransaccionFicha(Database& db) : db_(db.handle()) {
        // Inside a transaction already (a save that redisplays through another
        // button's procedure): that one covers these statements too.
        if (sqlite3_get_autocommit(db_)) abierta_ = sqlite3_exec(db_, "BEGIN", nullptr, nullptr, nullptr) == SQLITE_OK;
    }
    ~TransaccionFicha() {
        if (abierta_) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    TransaccionFicha(const TransaccionFicha&) = delete;
    TransaccionFicha& operator=(const TransaccionFicha&) = delete;

    void Confirmar() {
        if (abierta_) sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr);
        abierta_ = false;
    }

private:
    sqlite3* db_;
    bool abierta_ = false;
};

} // namespace vel
