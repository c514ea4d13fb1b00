#pragma once

#include "platform/appkit/LayoutAnchor.h"

#include <initializer_list>

namespace appkit {

/// Puts constraints between a view and its superview or its siblings into force; they end with the views.
void activateConstraints(std::initializer_list<LayoutConstraint> constraints);

} // namespace appkit
