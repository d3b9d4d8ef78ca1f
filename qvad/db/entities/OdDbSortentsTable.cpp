#include "qvad/db/entities/OdDbSortentsTable.h"

#include "qvad/db/OdDbDatabase.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>

using qvad::Handle;

std::vector<std::pair<Handle, Handle>> OdDbSortentsTable::entries() const {
    std::vector<std::pair<Handle, Handle>> out;
    auto tags = this->tags();
    const auto b_e = qvad::db::partRange(*this, kSubclass);
    [[maybe_unused]] const auto b = b_e.first;
    [[maybe_unused]] const auto e = b_e.second;
    for (std::size_t i = b; i + 1 < e; ++i)
        if (tags[i].code == 331 && tags[i + 1].code == 5)
            out.emplace_back(qvad::parseHandle(tags[i].value()), qvad::parseHandle(tags[i + 1].value()));
    return out;
}

Handle OdDbSortentsTable::sortHandle(Handle entity) const {
    for (auto [e, sort] : entries())
        if (e == entity) return sort;
    return entity;
}

std::vector<Handle> OdDbSortentsTable::drawOrder() const {
    std::vector<Handle> order;
    if (!database()) return order;
    auto* block = dynamic_cast<OdDbBlockTableRecord*>(database()->getObject(blockHandle()));
    if (!block) return order;
    std::unordered_map<Handle, Handle> sorts;
    for (auto [e, sort] : entries()) sorts.emplace(e, sort);
    for (const OdDbEntity* e : block->entities())
        if (!e->isErased()) order.push_back(e->handle());
    auto key = [&](Handle h) {
        auto it = sorts.find(h);
        return it == sorts.end() ? h : it->second;
    };
    std::stable_sort(order.begin(), order.end(), [&](Handle a, Handle b) { return key(a) < key(b); });
    return order;
}

void OdDbSortentsTable::setDrawOrder(std::span<const Handle> order) {
    std::vector<Handle> current = drawOrder();
    std::unordered_set<Handle> wanted(order.begin(), order.end());
    bool same = wanted.size() == order.size() && order.size() == current.size();
    for (std::size_t i = 0; same && i < current.size(); ++i) same = wanted.count(current[i]) != 0;
    if (!same) throw std::invalid_argument("a draw order must list every entity of its block once");

    std::vector<Handle> keys(current.begin(), current.end());
    std::sort(keys.begin(), keys.end());
    std::vector<Tag> run;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (order[i] == keys[i]) continue;
        run.emplace_back(331, keep(qvad::formatHandle(order[i])));
        run.emplace_back(5, keep(qvad::formatHandle(keys[i])));
    }
    // Entries of entities that left the block are kept; they cost nothing and other readers skip them.
    std::unordered_set<Handle> inBlock(current.begin(), current.end());
    for (auto [e, sort] : entries()) {
        if (inBlock.count(e)) continue;
        run.emplace_back(331, keep(qvad::formatHandle(e)));
        run.emplace_back(5, keep(qvad::formatHandle(sort)));
    }
    // Only the pairs go: a table without its marker must keep its own handle (group 5 as well).
    const auto b_e = qvad::db::partRange(*this, kSubclass);
    [[maybe_unused]] auto b = b_e.first;
    [[maybe_unused]] auto e = b_e.second;
    qvad::db::editTags(*this, [&](std::vector<Tag>& tags) {
        std::size_t at = e;
        for (std::size_t i = e; i-- > b;) {
            if (tags[i].code != 331) continue;
            std::size_t n = i + 1 < e && tags[i + 1].code == 5 ? 2 : 1;
            tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(i),
                       tags.begin() + static_cast<std::ptrdiff_t>(i + n));
            e -= n;
            at = i;
        }
        if (at > e) at = e;
        tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(at), run.begin(), run.end());
    });
}

void OdDbSortentsTable::moveTo(std::span<const Handle> entities, Handle target, bool after) {
    std::vector<Handle> order = drawOrder();
    std::unordered_set<Handle> moving(entities.begin(), entities.end());
    moving.erase(target);
    std::vector<Handle> moved, rest;
    for (Handle h : order) (moving.count(h) ? moved : rest).push_back(h);
    if (moved.empty()) return;
    std::size_t at;
    if (target == 0) {
        at = after ? rest.size() : 0;
    } else {
        auto it = std::find(rest.begin(), rest.end(), target);
        if (it == rest.end()) return;
        at = static_cast<std::size_t>(it - rest.begin()) + (after ? 1 : 0);
    }
    rest.insert(rest.begin() + static_cast<std::ptrdiff_t>(at), moved.begin(), moved.end());
    setDrawOrder(rest);
}

void OdDbSortentsTable::moveToBottom(std::span<const Handle> entities) {
    moveTo(entities, 0, false);
}
void OdDbSortentsTable::moveToTop(std::span<const Handle> entities) {
    moveTo(entities, 0, true);
}
void OdDbSortentsTable::moveBelow(std::span<const Handle> entities, Handle target) {
    if (target != 0) moveTo(entities, target, false);
}
void OdDbSortentsTable::moveAbove(std::span<const Handle> entities, Handle target) {
    if (target != 0) moveTo(entities, target, true);
}
