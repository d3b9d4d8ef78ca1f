#pragma once

// Links of the list containers. The element is the first member so that a pointer to it leads back to its
// node without a search (see QvList::NodeOf).
template <class T> struct QvListNode {
    T data{};
    QvListNode* next = nullptr;

    QvListNode() = default;
    explicit QvListNode(const T& value) : data(value) {}
};

template <class T> struct QvDListNode : QvListNode<T> {
    QvDListNode* prev = nullptr;

    QvDListNode() = default;
    explicit QvDListNode(const T& value) : QvListNode<T>(value) {}
};
