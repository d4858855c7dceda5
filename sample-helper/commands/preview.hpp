#pragma once

class QCommandLineParser;

/// --preview: sends "preview" with the path of a picture of the chosen look, made of a drawn scene by the same filters
/// that make a Short. Throws Failure.
int runPreview(const QCommandLineParser &parser);
