#pragma once

// Registers the typed classes of entities and objects with the object factory. The factory calls it
// once, before it makes its first object.
void registerBuiltinObjectClasses();
