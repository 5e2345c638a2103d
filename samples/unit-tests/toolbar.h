/* A toolbar of a product, as far as it records its use. */
#ifndef TOOLBAR_H
#define TOOLBAR_H

void toolbar_press(const wchar_t* button);

#endif
