#pragma once

#include <functional>
#include <memory>

/// Calls a member function of a part of the dock; does nothing while OBS takes the dock, before there are parts.
template<typename Part, typename Function, typename... Arguments>
void callPart(const std::unique_ptr<Part> &part, Function function, const Arguments &...arguments)
{
	if (part) {
		std::invoke(function, *part, arguments...);
	}
}
